#include "Memory/CountedAllocations.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> allocations{0};

void* allocate(std::size_t size) {
    ++allocations;
    void* memory = std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

}  // namespace

long quarn::test::allocationCount() {
    return allocations;
}

// The forms that the standard library's other forms call, the aligned ones excepted: no type here is
// over-aligned.
void* operator new(std::size_t size) {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
