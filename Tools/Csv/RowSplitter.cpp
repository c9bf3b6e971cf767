#include "Csv/RowSplitter.h"

#include <algorithm>

#include "Csv/RowCells.h"

namespace quarn::tool {

namespace {

constexpr std::string_view kBlanks = " \t\r";

// Finds the line feed at the end of a row, outside of quotes. A quote begins a cell in quotes only
// at the beginning of the cell.
std::size_t findRowEnd(std::string_view text, char separator) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos || text[first] == '#') return text.find('\n');
    bool isInQuotes = false;
    bool isAtCellStart = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (character == '"' && (isInQuotes || isAtCellStart)) {
            // A doubled quote ends the quoted text and begins it again.
            isInQuotes = !isInQuotes;
            isAtCellStart = !isInQuotes;
        } else if (isInQuotes) {
            continue;
        } else if (character == '\n') {
            return i;
        } else {
            isAtCellStart = character == separator || (kBlanks.find(character) != std::string_view::npos &&
                                                       (isAtCellStart || separator == kBlankSeparator));
        }
    }
    return std::string_view::npos;
}

}  // namespace

std::size_t RowSplitter::lengthOfRows(std::string_view lines, std::size_t minBytes) const {
    if (quotedCells == QuotedCells::No) {
        const std::size_t feed = lines.find('\n', std::min(minBytes, lines.size()) - 1);
        return feed == std::string_view::npos ? feed : feed + 1;
    }
    std::size_t length = 0;
    while (length < minBytes) {
        const std::size_t end = findRowEnd(lines.substr(length), separator);
        if (end == std::string_view::npos) return end;
        length += end + 1;
    }
    return length;
}

std::size_t RowSplitter::lengthOfCompleteRows(std::string_view lines) const {
    if (quotedCells == QuotedCells::No) {
        const std::size_t feed = lines.rfind('\n');
        return feed == std::string_view::npos ? 0 : feed + 1;
    }
    std::size_t length = 0;
    for (;;) {
        const std::size_t end = findRowEnd(lines.substr(length), separator);
        if (end == std::string_view::npos) return length;
        length += end + 1;
    }
}

std::string_view RowSplitter::takeRow(std::string_view& lines) const {
    const std::size_t length = std::min(lengthOfRows(lines, 1), lines.size());
    std::string_view row = lines.substr(0, length);
    if (row.ends_with('\n')) row.remove_suffix(1);
    lines.remove_prefix(length);
    return row;
}

}  // namespace quarn::tool
