#include "Rows/ResultRows.h"

#include <algorithm>
#include <limits>

#include <QuarnKit/Base/NumberText.h>

#include "Csv/RowCells.h"
#include "Rows/StatusNumbers.h"

namespace quarn::tool {

namespace {

struct CsvText {
    std::string& text;
    void operator()(std::monostate /*nothing*/) const {}
    void operator()(double number) const { appendNumber(text, number); }
    void operator()(std::int64_t count) const { text += std::to_string(count); }
    void operator()(std::string_view word) const { text += word; }
};

void appendCsvRow(std::string& text, std::span<const Cell> cells, std::string_view passedText) {
    for (const Cell& cell : cells) {
        std::visit(CsvText{text}, cell);
        text += ',';
    }
    text.back() = '\n';
    if (passedText.empty()) return;
    text.pop_back();
    text += passedText;
    text += '\n';
}

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct ArrayNumber {
    double operator()(std::monostate /*nothing*/) const { return kNaN; }
    double operator()(double number) const { return number; }
    double operator()(std::int64_t count) const { return static_cast<double>(count); }
    double operator()(std::string_view word) const { return statusNumber(word); }
};

void setMember(JsonRow& row, std::size_t index, std::monostate /*nothing*/) {
    row.set(index, nullptr);
}

template <class Value>
void setMember(JsonRow& row, std::size_t index, const Value& value) {
    row.set(index, value);
}

// Longer whole numbers, such as serial numbers, would lose digits in programs that read all numbers
// as doubles.
constexpr std::size_t kMaxIntegerDigits = 15;

// JSON has no leading zeros and plus signs: such a text may be a name, as in 007.
bool isJsonNumber(std::string_view text) {
    text.remove_prefix(text.starts_with('-') ? 1 : 0);
    const bool isInteger = text.find_first_not_of("0123456789") == std::string_view::npos;
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || (digits > 1 && text.front() == '0') || (isInteger && digits > kMaxIntegerDigits))
        return false;
    return text.back() != '.' && text.find(".e") == std::string_view::npos &&
           text.find(".E") == std::string_view::npos;
}

void setPassedMember(JsonRow& row, std::size_t index, std::string_view cell) {
    if (cell.empty() || cell == "nan" || cell == "inf" || cell == "-inf") return row.set(index, nullptr);
    const auto number = isQuoted(cell) || !isJsonNumber(cell) ? std::nullopt : parseNumber(cell);
    if (!number) return row.set(index, textOf(cell));
    const bool isInteger = cell.find_first_not_of("-0123456789") == std::string_view::npos;
    isInteger ? row.set(index, static_cast<std::int64_t>(*number)) : row.set(index, *number);
}

void appendJsonRow(std::string& text, std::span<const Cell> cells, std::span<const std::string> passedCells,
                   JsonRow& row) {
    for (std::size_t i = 0; i < cells.size(); ++i)
        std::visit([&](const auto& value) { setMember(row, i, value); }, cells[i]);
    for (std::size_t i = 0; i < passedCells.size(); ++i)
        setPassedMember(row, cells.size() + i, passedCells[i]);
    text += ",\n";
    row.appendTo(text);
}

std::vector<std::string> namesOf(const std::vector<Column>& columns) {
    std::vector<std::string> names;
    names.reserve(columns.size());
    for (const Column& column : columns) names.push_back(column.name);
    return names;
}

}  // namespace

ResultRows::ResultRows(ResultFormat resultFormat, const std::vector<Column>& columns) : format(resultFormat) {
    if (format == ResultFormat::Json) jsonRow.emplace(namesOf(columns));
}

void ResultRows::setPassedCells(std::span<const std::string_view> cells) {
    if (format == ResultFormat::Json) {
        passedCells.assign(cells.begin(), cells.end());
        return;
    }
    if (format == ResultFormat::Npy) return setPassedNumbers(cells);
    passedText.clear();
    appendCommaCells(passedText, cells);
}

void ResultRows::setPassedNumbers(std::span<const std::string_view> cells) {
    passedNumbers.clear();
    for (const std::string_view cell : cells)
        passedNumbers.push_back(parseNumber(withoutQuotes(cell)).value_or(kNaN));
}

void ResultRows::addNumbers(std::span<const Cell> cells) {
    for (const Cell& cell : cells) rowNumbers.push_back(std::visit(ArrayNumber(), cell));
    rowNumbers.insert(rowNumbers.end(), passedNumbers.begin(), passedNumbers.end());
}

void ResultRows::add(std::span<const Cell> cells, HasResult hasResult) {
    if (format == ResultFormat::Npy)
        addNumbers(cells);
    else if (jsonRow)
        appendJsonRow(rows, cells, passedCells, *jsonRow);
    else
        appendCsvRow(rows, cells, passedText);
    length = rows.size();
    ++count;
    if (hasResult == HasResult::No) ++missingResults;
}

void ResultRows::clear() {
    rows.clear();
    rowNumbers.clear();
    length = 0;
    count = 0;
    missingResults = 0;
}

}  // namespace quarn::tool
