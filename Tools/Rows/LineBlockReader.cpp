#include "Rows/LineBlockReader.h"

#include <algorithm>

namespace quarn::tool {

namespace {

constexpr std::size_t kInitialBufferBytes = 65536;

}  // namespace

void LineBlockReader::discardConsumedLines() {
    std::copy(buffer.data() + consumed, buffer.data() + filled, buffer.data());
    filled -= consumed;
    consumed = 0;
}

// Grow step by step, so that small inputs need only a small buffer.
bool LineBlockReader::ensureCapacity(bool hasLine) {
    if (filled < buffer.size()) return true;
    const std::size_t limit = hasLine ? blockSize : std::max(blockSize, kMaxLineBytes + 1);
    if (filled >= limit) return false;
    buffer.resize(std::min(limit, std::max(kInitialBufferBytes, 2 * buffer.size())));
    return true;
}

bool LineBlockReader::next(std::string_view& lines) {
    discardConsumedLines();
    std::size_t complete = 0;  // bytes of whole lines; the rest has no line feed
    while (!isAtEnd && ensureCapacity(complete > 0) && (complete == 0 || input.isReady())) {
        char* const target = buffer.data() + filled;
        const std::size_t count = input.read(target, buffer.size() - filled);
        isAtEnd = count == 0;
        const std::size_t feed = std::string_view(target, count).rfind('\n');
        if (feed != std::string_view::npos) complete = filled + feed + 1;
        filled += count;
    }
    consumed = complete == 0 || isAtEnd ? filled : complete;
    lines = std::string_view(buffer.data(), consumed);
    return consumed > 0;
}

}  // namespace quarn::tool
