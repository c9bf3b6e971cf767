/// \file
/// The heap memory of an operation at its peak. A program that links this has each `new`
/// counted.
#pragma once

#include <cstddef>

namespace quarn::bench {

/// Counts from its construction on. Only one may exist at a time, in a program with one thread.
class MemoryCount {
public:
    MemoryCount();
    MemoryCount(const MemoryCount&) = delete;
    MemoryCount& operator=(const MemoryCount&) = delete;
    ~MemoryCount();

    /// The most bytes that were in use at once, beyond those in use at the start.
    [[nodiscard]] static std::ptrdiff_t peak();
};

}  // namespace quarn::bench
