#include "Rows/Input/NpyRowInput.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace quarn::tool {

namespace {

// About as many rows as a part of a CSV block has.
constexpr std::size_t kPartRows = 256;

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
    return text;
}

}  // namespace

NpyRowInput::NpyRowInput(InputStream source, const InputColumns& columns, std::size_t blockBytes)
    : reader(std::move(source)),
      rowText(joined(columns.names)),
      width(columns.names.size()),
      blockRows(std::max<std::size_t>(blockBytes / (width * sizeof(double)), 1)) {
    const std::uint64_t found = reader.header().columnCount;
    if (found != width)
        throw Error({.found = "found a NumPy array of " + std::to_string(found) +
                              (found == 1 ? " column" : " columns"),
                     .expected = std::to_string(width) + " (" + rowText + ")",
                     .file = reader.name()});
}

std::size_t NpyRowInput::nextBlock() {
    return (reader.next(blockRows, block) + kPartRows - 1) / kPartRows;
}

void NpyRowInput::parse(std::size_t part, CsvRows& rows) const {
    rows.clear();
    const std::size_t begin = part * kPartRows * width;
    const auto numbers = std::span(block).subspan(begin, std::min(kPartRows * width, block.size() - begin));
    rows.numbers.assign(numbers.begin(), numbers.end());
    const auto isMissing = [](double number) { return std::isnan(number); };
    for (std::size_t row = 0; row * width < numbers.size(); ++row) {
        const auto cells = numbers.subspan(row * width, width);
        if (std::all_of(cells.begin(), cells.end(), isMissing)) rows.emptyRows.push_back(row);
    }
}

Error NpyRowInput::noRowsError() const {
    return Error({.found = "found no rows", .expected = "rows of " + rowText, .file = name()});
}

}  // namespace quarn::tool
