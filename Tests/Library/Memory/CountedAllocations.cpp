#include "Library/Memory/CountedAllocations.h"

#include <malloc.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr long kNoLimit = std::numeric_limits<long>::max();

std::atomic<long> allocations{0};
std::atomic<long> bytes{0};
thread_local long allowed = kNoLimit;

// `take` gets the memory, null where there is none.
void* allocate(const auto& take) {
    ++allocations;
    if (allowed != kNoLimit && --allowed < 0) throw std::bad_alloc();
    void* memory = take();
    if (memory == nullptr) throw std::bad_alloc();
    bytes += static_cast<long>(malloc_usable_size(memory));
    return memory;
}

void release(void* memory) {
    bytes -= static_cast<long>(malloc_usable_size(memory));
    std::free(memory);
}

}  // namespace

long quarn::test::allocationCount() {
    return allocations;
}

long quarn::test::bytesInUse() {
    return bytes;
}

quarn::test::AllocationLimit::AllocationLimit(long allowed) {
    ::allowed = allowed;
}

quarn::test::AllocationLimit::~AllocationLimit() {
    ::allowed = kNoLimit;
}

// The forms that the standard library's other forms call.
void* operator new(std::size_t size) {
    return allocate([size] { return std::malloc(size); });
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    // The size has to be a multiple of the alignment.
    return allocate([=] { return std::aligned_alloc(step, (size + step - 1) / step * step); });
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    release(memory);
}
