#include "Csv/CsvRows.h"

#include <algorithm>

namespace quarn::tool {

void CsvRows::clear() {
    numbers.clear();
    passed.clear();
    emptyRows.clear();
    lineCount = 0;
    error.reset();
}

void CsvRows::read(std::string_view lines, const CsvFormat& format, const RowSplitter& splitter) {
    clear();
    try {
        while (!lines.empty()) {
            ++lineCount;
            const std::string_view row = splitter.takeRow(lines);
            format.parse(row, *this);
            if (splitter.quotedCells == QuotedCells::Yes)
                lineCount += static_cast<std::uint64_t>(std::count(row.begin(), row.end(), '\n'));
        }
    } catch (const Error& rowError) {
        error = rowError;
    }
}

}  // namespace quarn::tool
