/// \file
/// Memory that is about to be filled from end to end.
#pragma once

#include <atomic>
#include <cstddef>

namespace quarn::detail {

/// Fresh memory that several threads have the system back with pages, each when it has nothing else to do. In
/// a large range the first touch of the pages costs more than the work on what is put there.
///
/// It changes no contents. Where the system cannot do it, nothing happens.
class PagePrefault {
public:
    /// Gives a range to prefault. It must stay until no thread is in prefault() any more.
    /// \pre no range has been given
    void setRange(void* first, std::size_t size);

    /// Works on the range until nothing of it is left; returns at once where none has been given yet. Any
    /// number of threads may be in here.
    void prefault();

private:
    char* begin = nullptr;
    std::size_t pieceCount = 0;
    std::atomic<std::size_t> nextPiece = 0;
    std::atomic<bool> hasRange = false;
};

}  // namespace quarn::detail
