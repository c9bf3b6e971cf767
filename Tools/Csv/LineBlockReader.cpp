#include "Csv/LineBlockReader.h"

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
bool LineBlockReader::ensureCapacity(std::size_t completeBytes) {
    if (filled < buffer.size()) return true;
    const std::size_t limit = completeBytes > 0 ? blockSize : std::max(blockSize, kMaxLineBytes + 1);
    if (filled >= limit) return false;
    buffer.resize(std::min(limit, std::max(kInitialBufferBytes, 2 * buffer.size())));
    return true;
}

// A carriage return that is the last byte may belong to a line feed that is not read yet.
void LineBlockReader::findLineEnd() {
    const std::string_view text(buffer.data(), filled);
    const std::size_t end = text.find_first_of("\r\n");
    if (end == std::string_view::npos || (text[end] == '\r' && end + 1 == filled)) return;
    lineEnd = text[end] == '\n' || text[end + 1] == '\n' ? LineEnd::LineFeed : LineEnd::CarriageReturn;
}

void LineBlockReader::convertLineEnds(std::size_t newBytes) {
    const bool wasUnknown = lineEnd == LineEnd::Unknown;
    if (wasUnknown) findLineEnd();
    if (lineEnd != LineEnd::CarriageReturn) return;
    char* const end = buffer.data() + filled;
    std::replace(wasUnknown ? buffer.data() : end - newBytes, end, '\r', '\n');
}

bool LineBlockReader::next(std::string_view& lines) {
    discardConsumedLines();
    // Bytes of whole rows; the rest has no line feed. Rows are complete only after giveBack().
    std::size_t complete = rows.lengthOfCompleteRows({buffer.data(), filled});
    while (!isAtEnd && ensureCapacity(complete) && (complete == 0 || input.isReady())) {
        const std::size_t count = input.read(buffer.data() + filled, buffer.size() - filled);
        const std::string_view newText(buffer.data() + filled, count);
        isAtEnd = count == 0;
        filled += count;
        convertLineEnds(count);
        if (isSeparatorKnown && newText.find('"') != std::string_view::npos)
            rows.quotedCells = QuotedCells::Yes;
        complete += rows.lengthOfCompleteRows({buffer.data() + complete, filled - complete});
    }
    consumed = complete == 0 || isAtEnd ? filled : complete;
    lines = std::string_view(buffer.data(), consumed);
    return consumed > 0;
}

void LineBlockReader::giveBack(std::size_t size, char separator) {
    consumed -= size;
    isSeparatorKnown = true;
    rows.separator = separator;
    const std::string_view rest(buffer.data() + consumed, filled - consumed);
    if (rest.find('"') != std::string_view::npos) rows.quotedCells = QuotedCells::Yes;
}

}  // namespace quarn::tool
