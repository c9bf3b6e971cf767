/// \file
/// The count and the size of heap allocations, and a limit to them; a program that links it has
/// every `new` counted.
#pragma once

namespace quarn::test {

/// How often this program has allocated memory by `new` so far.
[[nodiscard]] long allocationCount();

/// How many bytes that `new` returned are in use.
[[nodiscard]] long bytesInUse();

/// While it lives, only so many further allocations of this thread succeed. The next ones throw
/// std::bad_alloc.
class AllocationLimit {
public:
    explicit AllocationLimit(long allowed);
    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;
    ~AllocationLimit();
};

}  // namespace quarn::test
