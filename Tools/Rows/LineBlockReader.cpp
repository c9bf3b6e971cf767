#include "Rows/LineBlockReader.h"

#include <algorithm>

namespace quarn {

namespace {

constexpr std::size_t kFirstSize = 65536;

}  // namespace

void LineBlocks::dropLinesHandedOut() {
    std::copy(buffer.data() + handedOut, buffer.data() + filled, buffer.data());
    filled -= handedOut;
    handedOut = 0;
}

// Small inputs need no more than a small buffer.
bool LineBlocks::makeRoom(bool hasLine) {
    if (filled < buffer.size()) return true;
    const std::size_t limit = hasLine ? blockSize : std::max(blockSize, kLongestLine + 1);
    if (filled >= limit) return false;
    buffer.resize(std::min(limit, std::max(kFirstSize, 2 * buffer.size())));
    return true;
}

bool LineBlocks::next(std::string_view& lines) {
    dropLinesHandedOut();
    std::size_t complete = 0;  // what is left has no line feed
    while (!isAtEnd && makeRoom(complete > 0) && (complete == 0 || input.isReady())) {
        char* const target = buffer.data() + filled;
        const std::size_t count = input.read(target, buffer.size() - filled);
        isAtEnd = count == 0;
        const std::size_t feed = std::string_view(target, count).rfind('\n');
        if (feed != std::string_view::npos) complete = filled + feed + 1;
        filled += count;
    }
    handedOut = complete == 0 || isAtEnd ? filled : complete;
    lines = std::string_view(buffer.data(), handedOut);
    return handedOut > 0;
}

}  // namespace quarn
