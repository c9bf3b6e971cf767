#include "Rows/Input/CsvRowInput.h"

#include <algorithm>

namespace quarn::tool {

namespace {

// Small enough that the threads finish at about the same time, and large enough that the
// cost of scheduling does not show.
constexpr std::size_t kPartBytes = 8192;

}  // namespace

std::size_t CsvRowInput::nextBlock() {
    parts.clear();
    std::string_view lines;
    if (!blocks.next(lines)) return 0;
    while (!lines.empty()) {
        const std::size_t length = std::min(blocks.splitter().lengthOfRows(lines, kPartBytes), lines.size());
        parts.push_back(lines.substr(0, length));
        lines.remove_prefix(length);
    }
    return parts.size();
}

void CsvRowInput::parse(std::size_t part, CsvRows& rows) const {
    rows.read(parts[part], head.format, blocks.splitter());
}

}  // namespace quarn::tool
