#include "Csv/CsvHead.h"

#include <algorithm>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Base/Units.h>

#include "Csv/DecimalCommas.h"
#include "Csv/RowCells.h"

namespace quarn::tool {

namespace {

// Counts a character outside of quotes.
std::size_t countOf(char wanted, std::string_view row) {
    std::size_t count = 0;
    bool isInQuotes = false;
    for (const char character : row) {
        if (character == '"') isInQuotes = !isInQuotes;
        if (character == wanted && !isInQuotes) ++count;
    }
    return count;
}

// Tabs may also be blanks after commas.
char separatorOf(std::string_view row) {
    if (countOf(';', row) > 0) return ';';
    const std::size_t commas = countOf(',', row);
    if (countOf('\t', row) > commas) return '\t';
    return commas == 0 && countOf(' ', row) > 0 ? kBlankSeparator : ',';
}

bool isNumber(std::string_view cell) {
    return parseNumber(withoutQuotes(cell)).has_value();
}

// Column names without their units.
std::vector<std::string_view> plainNames(const std::vector<std::string>& names) {
    std::vector<std::string_view> plain;
    plain.reserve(names.size());
    for (const std::string& name : names) plain.push_back(splitHeaderName(name).name);
    return plain;
}

// Two columns of one name could not be distinguished in the result.
void requireOneName(const std::vector<std::string>& names, const ColumnMatch& match) {
    const std::vector<std::string_view> plain = plainNames(names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isRead = std::find(match.cells.begin(), match.cells.end(), i) != match.cells.end();
        for (std::size_t j = 0; j < names.size(); ++j) {
            const bool isSame = isRead ? isSameColumnName(plain[i], plain[j]) : names[i] == names[j];
            if (i != j && isSame && !names[i].empty())
                throw Error({.found = "found two columns named " + quotedExcerpt(names[i]),
                             .expected = "different names"});
        }
    }
}

void requireUnit(const std::vector<std::string>& names, const ColumnMatch& match, const std::string& unit) {
    for (const std::size_t cell : match.cells) {
        const std::string_view found = splitHeaderName(names[cell]).unit;
        if (metersPerUnit(found) && found != unit)
            throw Error({.found = "found the column " + quotedExcerpt(names[cell]),
                         .expected = "lengths in " + unit + ", or the option --unit " + std::string(found)});
    }
}

CsvFormat formatOf(std::string_view row, const InputColumns& columns, const std::string& unit) {
    if (row.size() > kMaxLineBytes) return {columns.names, ','};  // the format refuses it
    const char separator = separatorOf(row);
    const std::vector<std::string_view> cells = cellsOf(row, separator);
    if (std::any_of(cells.begin(), cells.end(), isNumber) || hasDecimalCommas(row))
        return {columns.names, separator};
    CsvHeader header;
    for (const std::string_view cell : cells) header.names.push_back(textOf(cell));
    const auto match = matchColumns(columns, plainNames(header.names));
    if (!match)
        throw Error({.found = row.starts_with('<') ? "found a web page or XML"
                                                   : "found the columns " + quotedExcerpt(row),
                     .expected = knownNames(columns) + ", or rows of numbers"});
    header.match = *match;
    requireOneName(header.names, header.match);
    requireUnit(header.names, header.match, unit);
    return {std::move(header), separator};
}

void skipByteOrderMark(std::string_view& lines) {
    if (isMarkedUtf16(lines))
        throw Error({.found = "found UTF-16 text",
                     .expected = "UTF-8 (the command iconv -f UTF-16 -t UTF-8 converts it)"});
    if (lines.starts_with(kUtf8Mark)) lines.remove_prefix(kUtf8Mark.size());
}

}  // namespace

CsvHead readCsvHead(LineBlockReader& blocks, const InputColumns& columns, const std::string& unit) {
    std::uint64_t lineCount = 0;
    bool isAtBeginning = true;
    try {
        for (std::string_view lines; blocks.next(lines);) {
            if (isAtBeginning) skipByteOrderMark(lines);
            isAtBeginning = false;
            while (!lines.empty()) {
                const std::string_view before = lines;
                const std::string_view row = trimmed(blocks.splitter().takeRow(lines));
                ++lineCount;
                if (!hasCells(row)) continue;
                CsvFormat format = formatOf(row, columns, unit);
                const std::string_view rest = format.hasNames() ? lines : before;
                blocks.giveBack(rest.size(), format.separatorOfCells());
                const std::uint64_t lastLine = format.hasNames() ? lineCount : lineCount - 1;
                return {std::move(format), lastLine};
            }
        }
    } catch (const Error& error) {
        throw error.at(blocks.name(), lineCount);
    }
    throw CsvFormat(columns.names, ',').noRowsError().at(blocks.name(), 0);
}

}  // namespace quarn::tool
