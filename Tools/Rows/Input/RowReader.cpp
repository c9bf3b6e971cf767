#include "Csv/CsvReader.h"

#include <algorithm>

namespace quarn::tool {

namespace {

constexpr std::size_t kBlockSize = 65536;

}  // namespace

CsvReader::CsvReader(InputStream source, const InputColumns& columns, const std::string& unit)
    : blocks(std::move(source), kBlockSize), head(readCsvHead(blocks, columns, unit)), line(head.lineCount) {}

bool CsvReader::next() {
    for (;;) {
        if (lines.empty() && !blocks.next(lines)) {
            if (!hasRows) throw head.format.noRowsError().at(name(), 0);
            return false;
        }
        const std::string_view text = blocks.splitter().takeRow(lines);
        row.read(text, head.format, blocks.splitter());
        if (row.error) throw row.error->at(name(), line + row.lineCount);
        line += std::max<std::uint64_t>(row.lineCount, 1);
        if (row.numbers.empty()) continue;
        hasRows = true;
        return true;
    }
}

std::span<const double> CsvReader::numbers() const {
    if (!row.emptyRows.empty()) return {};
    return row.numbers;
}

}  // namespace quarn::tool
