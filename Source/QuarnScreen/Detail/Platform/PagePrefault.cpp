#include "PagePrefault.h"

#include <cstdint>

#include <Common/Detail/Assert.h>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quarn::detail {

namespace {

// A multiple of every page size. A piece takes a millisecond or two.
constexpr std::size_t kPiece = std::size_t{1} << 22U;

void prefaultPiece([[maybe_unused]] char* first) {
#if defined(MADV_POPULATE_WRITE)
    (void)madvise(first, kPiece, MADV_POPULATE_WRITE);
#endif
}

}  // namespace

void PagePrefault::setRange(void* first, std::size_t size) {
    QUARN_ASSERT(!hasRange);
    const std::size_t misalignment = reinterpret_cast<std::uintptr_t>(first) % kPiece;
    const std::size_t skipped = (kPiece - misalignment) % kPiece;
    if (size < skipped) return;
    begin = static_cast<char*>(first) + skipped;
    pieceCount = (size - skipped) / kPiece;
    hasRange = true;
}

void PagePrefault::prefault() {
    if (!hasRange) return;
    for (std::size_t piece = nextPiece++; piece < pieceCount; piece = nextPiece++)
        prefaultPiece(begin + piece * kPiece);
}

}  // namespace quarn::detail
