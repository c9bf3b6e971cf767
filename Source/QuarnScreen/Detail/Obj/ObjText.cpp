#include "ObjText.h"

#include <algorithm>
#include <cstdint>
#include <thread>

namespace quarn::detail {

namespace {

// A block is still in the cache when the stream overwrites the zeros of a resize.
constexpr std::size_t kReadBlockBytes = 256 * std::size_t{1024};

constexpr std::int32_t kMaxRanges = 256;
constexpr std::int32_t kMinRangeBytes = 1000000;

void readBytes(std::istream& in, std::size_t size, std::string& text) {
    text.reserve(size);
    while (text.size() < size && in) {
        const std::size_t start = text.size();
        const std::size_t count = std::min(kReadBlockBytes, size - start);
        text.resize(start + count);
        in.read(text.data() + start, static_cast<std::streamsize>(count));
    }
    text.resize(size);
}

// Blanks the pairs of which both bytes lie in the range.
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

void readWholeStream(std::istream& in, std::string& text) {
    text.clear();
    if (!in.good()) return;
    const std::istream::pos_type entry = in.tellg();
    if (entry == std::istream::pos_type(-1)) return;
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    in.seekg(0, std::ios::beg);
    if (in && size > 0) readBytes(in, static_cast<std::size_t>(size), text);
    in.seekg(entry);
}

std::vector<ObjRange> continuationRanges(std::size_t size) {
    const auto signedSize = static_cast<std::int32_t>(static_cast<std::uint32_t>(size));
    const std::int32_t length = std::max(signedSize / kMaxRanges, kMinRangeBytes);
    const std::int32_t wholeRanges = signedSize / length;

    std::vector<ObjRange> ranges;
    const auto append = [&](std::int32_t first, std::int32_t last) {
        const auto start = static_cast<std::size_t>(first);
        ranges.push_back({start, last > first ? static_cast<std::size_t>(last) : start});
    };
    for (std::int32_t k = 0; k < wholeRanges; ++k) append(k * length, (k + 1) * length);
    if (wholeRanges >= 0) append(wholeRanges * length, signedSize - 1);
    return ranges;
}

void blankContinuations(std::string& text) {
    const std::vector<ObjRange> ranges = continuationRanges(text.size());
    {
        std::vector<std::jthread> threads;
        threads.reserve(ranges.size());
        for (const ObjRange& range : ranges) threads.emplace_back(blankRange, text.data(), range);
    }
    // These pairs wait until all threads have ended, since two threads must not access one byte.
    for (const ObjRange& range : ranges) blankAcross(text, range);
}

}  // namespace quarn::detail
