#include "ObjContinuations.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <thread>

namespace quarn::detail {

namespace {

constexpr std::int32_t kMaxPieces = 256;
constexpr std::int32_t kMinPieceSize = 1000000;

// Blanks the pairs that lie wholly in the range.
void blankRange(char* text, ObjRange range) {
    if (range.first == range.last) return;
    char* p = text + range.first;
    const char* const last = text + range.last - 1;
    while (p < last) {
        p = static_cast<char*>(std::memchr(p, '\\', static_cast<std::size_t>(last - p)));
        if (p == nullptr) return;
        ++p;
        if (*p != '\n') continue;
        p[-1] = ' ';
        *p++ = ' ';
    }
}

// Blanks the pair of which only the backslash lies in the range.
void blankAcross(std::string& text, ObjRange range) {
    if (range.first == range.last) return;
    const std::size_t backslash = range.last - 1;
    if (text[backslash] == '\\' && text[range.last] == '\n') text[backslash] = text[range.last] = ' ';
}

}  // namespace

std::vector<ObjRange> continuationRanges(std::size_t size) {
    const auto signedSize = static_cast<std::int32_t>(static_cast<std::uint32_t>(size));
    const std::int32_t piece = std::max(signedSize / kMaxPieces, kMinPieceSize);
    const std::int32_t wholePieces = signedSize / piece;

    std::vector<ObjRange> ranges;
    const auto append = [&](std::int32_t first, std::int32_t last) {
        const auto start = static_cast<std::size_t>(first);
        ranges.push_back({start, last > first ? static_cast<std::size_t>(last) : start});
    };
    for (std::int32_t k = 0; k < wholePieces; ++k) append(k * piece, (k + 1) * piece);
    if (wholePieces >= 0) append(wholePieces * piece, signedSize - 1);
    return ranges;
}

void blankContinuations(std::string& text) {
    const std::vector<ObjRange> ranges = continuationRanges(text.size());
    {
        std::vector<std::jthread> threads;
        threads.reserve(ranges.size());
        for (const ObjRange& range : ranges) threads.emplace_back(blankRange, text.data(), range);
    }
    // Two threads must not touch one byte, so these pairs wait until all have ended.
    for (const ObjRange& range : ranges) blankAcross(text, range);
}

}  // namespace quarn::detail
