#include "Measuring/CountedMemory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

// Without a count in progress, allocations cost what they always do.
bool isCounting = false;
std::ptrdiff_t bytesInUse = 0;
std::ptrdiff_t peakBytes = 0;

void note(std::ptrdiff_t bytes) {
    bytesInUse += bytes;
    peakBytes = std::max(peakBytes, bytesInUse);
}

// With what the allocator rounds up, which is in use as well.
std::ptrdiff_t sizeOf(void* memory) {
    return static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
}

void* allocate(std::size_t size) {
    void* const memory = std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    if (isCounting) note(sizeOf(memory));
    return memory;
}

void release(void* memory) {
    if (isCounting) note(-sizeOf(memory));
    std::free(memory);
}

}  // namespace

namespace quarn::bench {

MemoryCount::MemoryCount() {
    bytesInUse = 0;
    peakBytes = 0;
    isCounting = true;
}

MemoryCount::~MemoryCount() {
    isCounting = false;
}

std::ptrdiff_t MemoryCount::peak() {
    return peakBytes;
}

}  // namespace quarn::bench

// The forms that the standard library's other forms call.
void* operator new(std::size_t size) {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}
