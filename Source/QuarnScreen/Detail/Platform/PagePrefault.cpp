#include "PagePrefault.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quarn {

namespace {

// A multiple of any page's size, and a millisecond or two of work.
constexpr std::size_t kPiece = std::size_t{1} << 22U;

void populatePiece([[maybe_unused]] char* first) {
#if defined(MADV_POPULATE_WRITE)
    (void)madvise(first, kPiece, MADV_POPULATE_WRITE);
#endif
}

}  // namespace

void PagePopulation::offer(void* first, std::size_t size) {
    const std::size_t misalignment = reinterpret_cast<std::uintptr_t>(first) % kPiece;
    const std::size_t skipped = (kPiece - misalignment) % kPiece;
    if (size < skipped) return;
    begin = static_cast<char*>(first) + skipped;
    pieceCount = (size - skipped) / kPiece;
    isOffered = true;
}

void PagePopulation::populate() {
    if (!isOffered) return;
    for (std::size_t piece = nextPiece++; piece < pieceCount; piece = nextPiece++)
        populatePiece(begin + piece * kPiece);
}

}  // namespace quarn
