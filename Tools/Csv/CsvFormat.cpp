#include "Csv/CsvFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Base/Units.h>

#include "Csv/CsvRows.h"
#include "Csv/DecimalCommas.h"
#include "Csv/LineBlockReader.h"
#include "Csv/RowCells.h"

namespace quarn::tool {

namespace {

// Names in use have no unit.
bool isIn(const std::vector<std::string>& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& used) { return isSameColumnName(used, name); });
}

const char* skipBlanks(const char* position, const char* last) {
    while (position != last && *position == ' ') ++position;
    return position;
}

std::string_view withoutBlanksAtEnd(const char* start, const char* end) {
    while (end != start && (end[-1] == ' ' || end[-1] == '\t')) --end;
    return {start, static_cast<std::size_t>(end - start)};
}

std::string_view withoutCarriageReturns(std::string_view line) {
    while (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

Error decimalCommaError(std::string_view text) {
    return Error({.found = "found decimal commas in " + quotedExcerpt(text),
                  .expected = "decimal points (the command tr , . converts them)"});
}

}  // namespace

CsvFormat::CsvFormat(std::vector<std::string> numberNames, char cellSeparator)
    : names(std::move(numberNames)), preferredNames(names.size()), separator(cellSeparator) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        cells.push_back({.number = i, .isRead = true});
        numberCells.push_back(i);
    }
}

CsvFormat::CsvFormat(CsvHeader header, char cellSeparator)
    : cells(header.names.size()),
      names(std::move(header.names)),
      preferredNames(names.size()),
      numberCells(std::move(header.match.cells)),
      conversion(header.match.conversion),
      hasHeader(true),
      separator(cellSeparator) {
    for (std::size_t i = 0; i < numberCells.size(); ++i) {
        cells[numberCells[i]].isRead = true;
        cells[numberCells[i]].number = i;
        preferredNames[numberCells[i]] = header.match.firstNames[i];
    }
}

std::vector<PassedColumn> CsvFormat::passColumns(const std::vector<std::string>& namesInUse) {
    std::vector<PassedColumn> columns;
    for (std::size_t i = 0; hasHeader && i < cells.size(); ++i) {
        const HeaderName header = splitHeaderName(names[i]);
        const bool hasUnit = metersPerUnit(header.unit).has_value();
        PassedColumn column{.name = names[i], .hasUnit = cells[i].isRead && hasUnit};
        if (column.hasUnit) column.name = header.name;
        if ((cells[i].isRead || hasUnit || header.unit.empty()) && isIn(namesInUse, header.name))
            column.name = isNameOfCell(preferredNames[i]) ? "" : preferredNames[i];
        cells[i].isPassed = !column.name.empty() && !isIn(namesInUse, column.name);
        if (cells[i].isPassed) columns.push_back(std::move(column));
    }
    return columns;
}

bool CsvFormat::parse(std::string_view line, CsvRows& rows) const {
    if (line.size() > kMaxLineBytes)
        throw Error({.found = "found a line of more than " + std::to_string(kMaxLineBytes) + " bytes",
                     .expected = std::to_string(cells.size()) + (hasHeader ? " cells" : " numbers")});
    // Tabs at an end are empty cells if tabs separate cells.
    const std::string_view text =
        separator == '\t' && !trimmed(line).empty() ? withoutCarriageReturns(line) : trimmed(line);
    if (!hasCells(text)) return false;
    std::array<double, kMaxRowNumbers> numbers{};
    const std::size_t passedLength = rows.passed.size();
    if (!parseFast(text, numbers.data(), rows)) {
        rows.passed.resize(passedLength);
        try {
            parseCells(text, numbers.data(), rows);
        } catch (const Error&) {
            rows.passed.resize(passedLength);
            if (hasDecimalCommas(text)) throw decimalCommaError(text);
            throw;
        }
    }
    if (conversion != RowConversion::None) convert(numbers.data());
    rows.numbers.insert(rows.numbers.end(), numbers.data(), numbers.data() + numberCells.size());
    return true;
}

bool CsvFormat::skipSeparator(const char*& position, const char* last) const {
    const char* const before = position;
    position = skipBlanks(position, last);
    if (separator == kBlankSeparator) return position != before;
    if (position == last || *position != separator) return false;
    position = skipBlanks(position + 1, last);
    return true;
}

// Parses the usual output of programs: numbers without plus signs, no cell in quotes. parseCells()
// parses the rest.
bool CsvFormat::parseFast(std::string_view text, double* numbers, CsvRows& rows) const {
    const char* position = text.data();
    const char* const last = position + text.size();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0 && !skipSeparator(position, last)) return false;
        const char* const start = position;
        if (cells[i].isRead) {
            const auto [end, error] = std::from_chars(position, last, numbers[cells[i].number]);
            if (error != std::errc()) return false;
            position = end;
        } else {
            position = std::find(position, last, separator);
            if (std::find(start, position, '"') != position) return false;
        }
        if (cells[i].isPassed) rows.passed.push_back(withoutBlanksAtEnd(start, position));
    }
    return position == last;
}

void CsvFormat::parseCells(std::string_view text, double* numbers, CsvRows& rows) const {
    const std::vector<std::string_view> row = cellsOf(text, separator);
    const bool isEmpty = hasHeader && row.size() == cells.size() && hasOnlyEmptyNumbers(row);
    if (isEmpty) {
        std::fill_n(numbers, numberCells.size(), std::numeric_limits<double>::quiet_NaN());
        rows.emptyRows.push_back(rows.numbers.size() / numberCells.size());
    }
    for (std::size_t i = 0; i < std::min(row.size(), cells.size()); ++i) {
        if (cells[i].isRead && !isEmpty) numbers[cells[i].number] = parseCell(i, row[i]);
        if (cells[i].isPassed) rows.passed.push_back(row[i]);
    }
    if (row.size() == cells.size()) return;
    const std::string unit = hasHeader ? " cell" : " number";
    throw Error({.found = "found " + std::to_string(row.size()) + unit + (row.size() == 1 ? "" : "s"),
                 .expected = std::to_string(cells.size()) + " (" + rowText() + ")"});
}

double CsvFormat::parseCell(std::size_t index, std::string_view cell) const {
    const auto number = parseNumber(withoutQuotes(cell));
    if (number) return *number;
    if (isDecimalComma(cell)) throw decimalCommaError(cell);
    throw Error({.found = "found " + quotedExcerpt(cell),
                 .expected = "a number for " + names[index] + " (" + rowText() + ")"});
}

void CsvFormat::convert(double* numbers) const {
    const double sign = conversion == RowConversion::DirectionToTarget ? 1.0 : -1.0;
    for (std::size_t i = 0; i < 3; ++i) numbers[i + 3] += sign * numbers[i];
}

bool CsvFormat::hasOnlyEmptyNumbers(const std::vector<std::string_view>& row) const {
    return std::all_of(numberCells.begin(), numberCells.end(),
                       [&](std::size_t cell) { return trimmed(withoutQuotes(row[cell])).empty(); });
}

bool CsvFormat::isNameOfCell(std::string_view name) const {
    return std::any_of(names.begin(), names.end(), [&](const std::string& cell) {
        return isSameColumnName(splitHeaderName(cell).name, name);
    });
}

Error CsvFormat::noRowsError() const {
    return Error({.found = "found no rows", .expected = "rows of " + rowText()});
}

std::string CsvFormat::rowText() const {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) text += (i == 0 ? "" : ",") + names[i];
    return text;
}

}  // namespace quarn::tool
