#include "Csv/RowCells.h"

#include <algorithm>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn::tool {

namespace {

constexpr std::string_view kBlanks = " \t";

void skipBlanks(std::string_view& text, char separator) {
    while (!text.empty() && kBlanks.find(text.front()) != std::string_view::npos && text.front() != separator)
        text.remove_prefix(1);
}

}  // namespace

// The length up to the closing quote, which is one that is not followed by another.
std::size_t RowCells::quotedLength() const {
    for (std::size_t i = 1; i < rest.size(); ++i) {
        if (rest[i] != '"') continue;
        if (i + 1 == rest.size() || rest[i + 1] != '"') return i + 1;
        ++i;
    }
    throw Error({.found = "found " + quotedExcerpt(rest), .expected = "a quote at the end of the cell"});
}

bool RowCells::next(std::string_view& cell) {
    if (isAtEnd) return false;
    skipBlanks(rest, separator);
    const bool isInQuotes = isQuoted(rest);
    const std::size_t start = isInQuotes ? quotedLength() : 0;
    const std::size_t end =
        separator == kBlankSeparator ? rest.find_first_of(kBlanks, start) : rest.find(separator, start);
    cell = trimmed(rest.substr(0, end));
    if (isInQuotes && cell.size() > start)
        throw Error({.found = "found " + quotedExcerpt(cell), .expected = "nothing after the closing quote"});
    isAtEnd = end == std::string_view::npos;
    if (isAtEnd) return true;
    rest.remove_prefix(end + 1);
    if (separator == kBlankSeparator)
        rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
    return true;
}

std::vector<std::string_view> cellsOf(std::string_view row, char separator) {
    std::vector<std::string_view> cells;
    RowCells reader(row, separator);
    for (std::string_view cell; reader.next(cell);) cells.push_back(cell);
    return cells;
}

std::string_view withoutQuotes(std::string_view cell) {
    return isQuoted(cell) && cell.size() > 1 ? cell.substr(1, cell.size() - 2) : cell;
}

std::string textOf(std::string_view cell) {
    if (!isQuoted(cell)) return std::string(cell);
    std::string text;
    const std::string_view inner = withoutQuotes(cell);
    for (std::size_t i = 0; i < inner.size(); ++i) {
        text += inner[i];
        if (inner[i] == '"') ++i;
    }
    return text;
}

void appendCommaText(std::string& row, std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        row += text;
        return;
    }
    row += '"';
    for (const char character : text) {
        if (character == '"') row += '"';
        row += character;
    }
    row += '"';
}

// Cells that commas separate already are copied together: in their row, the next one begins one
// character after the end of the one before.
void appendCommaCells(std::string& row, std::span<const std::string_view> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const char* const start = cells[i].data();
        const char* end = start + cells[i].size();
        const std::size_t first = i;
        while (i + 1 < cells.size() && cells[i + 1].data() == end + 1 && *end == ',') {
            ++i;
            end += 1 + cells[i].size();
        }
        row += ',';
        if (i > first || isQuoted(cells[i]))
            row.append(start, end);
        else
            appendCommaText(row, cells[i]);
    }
}

}  // namespace quarn::tool
