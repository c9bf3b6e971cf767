#include "Rows/Input/RowReader.h"

#include <algorithm>

namespace quarn::tool {

namespace {

constexpr std::size_t kBlockBytes = 65536;

}  // namespace

RowReader::RowReader(InputStream source, const InputColumns& columns, const std::string& unit)
    : rowInput(openRowInput(std::move(source), columns, unit, kBlockBytes)),
      lineCount(rowInput->headLineCount()) {}

bool RowReader::next() {
    while (nextRow == rowCount)
        if (!parseNextPart()) return false;
    ++nextRow;
    hasRows = true;
    return true;
}

bool RowReader::parseNextPart() {
    if (rows.error) throw rows.error->at(name(), lineCount);
    if (nextPart == partCount) {
        partCount = rowInput->nextBlock();
        nextPart = 0;
    }
    if (partCount == 0) {
        if (!hasRows) throw rowInput->noRowsError();
        return false;
    }
    rowInput->parse(nextPart, rows);
    ++nextPart;
    rowCount = rows.numbers.size() / rowInput->numberCount();
    nextRow = 0;
    lineCount += rows.lineCount;
    return true;
}

std::span<const double> RowReader::numbers() const {
    const std::size_t row = nextRow - 1;
    if (std::binary_search(rows.emptyRows.begin(), rows.emptyRows.end(), row)) return {};
    const std::size_t width = rowInput->numberCount();
    return std::span(rows.numbers).subspan(row * width, width);
}

std::span<const std::string_view> RowReader::passedCells() const {
    const std::size_t width = rows.passed.size() / rowCount;
    return std::span(rows.passed).subspan((nextRow - 1) * width, width);
}

}  // namespace quarn::tool
