/// \file
/// Prefault of memory that is about to be written.
#pragma once

#include <atomic>
#include <cstddef>

namespace quarn::detail {

/// Prefaults a newly allocated range from several idle threads. For large ranges the page faults
/// cost more than the writes that follow. Leaves the contents unchanged; does nothing if the kernel
/// lacks support.
class PagePrefault {
public:
    /// Sets the range. It must stay allocated until no thread is in prefault().
    /// \pre no range has been set
    void setRange(void* first, std::size_t size);

    /// Prefaults pieces of the range until none is left. Returns at once if no range has been set.
    /// Any number of threads may call at once.
    void prefault();

private:
    char* begin = nullptr;
    std::size_t pieceCount = 0;
    std::atomic<std::size_t> nextPiece = 0;
    std::atomic<bool> hasRange = false;
};

}  // namespace quarn::detail
