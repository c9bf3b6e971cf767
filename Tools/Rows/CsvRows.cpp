#include "Rows/CsvRows.h"

#include <charconv>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>

#include "Rows/LineBlockReader.h"

namespace quarn::tool {

namespace {

std::string_view firstCell(std::string_view text) {
    return text.substr(0, text.find(','));
}

bool isRow(std::string_view trimmedLine) {
    return !trimmedLine.empty() && !trimmedLine.starts_with('#');
}

}  // namespace

std::string_view takeLine(std::string_view& lines) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    const std::string_view line = lines.substr(0, end);
    lines.remove_prefix(std::min(end + 1, lines.size()));
    return line;
}

bool CsvFormat::parse(std::string_view line, std::vector<double>& numbers) const {
    if (line.size() > kMaxLineBytes)
        throw Error({.found = "found a line of more than " + std::to_string(kMaxLineBytes) + " bytes",
                     .expected = std::to_string(columns.size()) + " numbers"});
    const std::string_view text = trimmed(line);
    if (!isRow(text)) return false;
    const std::size_t length = numbers.size();
    if (parseFast(text, numbers)) return true;
    numbers.resize(length);
    parseCells(text, numbers);
    return true;
}

// Parses the usual output of programs: numbers without blanks or plus signs. parseCells() parses
// the rest.
bool CsvFormat::parseFast(std::string_view text, std::vector<double>& numbers) const {
    const char* position = text.data();
    const char* const last = position + text.size();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0 && (position == last || *position++ != ',')) return false;
        double number = 0.0;
        const auto [end, error] = std::from_chars(position, last, number);
        if (error != std::errc()) return false;
        numbers.push_back(number);
        position = end;
    }
    return position == last;
}

void CsvFormat::parseCells(std::string_view text, std::vector<double>& numbers) const {
    const std::size_t length = numbers.size();
    const auto refuse = [&](const std::string& found, const std::string& expected) {
        std::string names;
        for (const std::string& column : columns) names += names.empty() ? column : "," + column;
        numbers.resize(length);
        throw Error({.found = found, .expected = expected + " (" + names + ")"});
    };
    std::size_t count = 0;
    for (std::string_view rest = text;; ++count) {
        const std::string_view cell = firstCell(rest);
        if (count < columns.size()) {
            const auto number = parseNumber(cell);
            if (!number) refuse("found " + quotedExcerpt(trimmed(cell)), "a number for " + columns[count]);
            numbers.push_back(*number);
        }
        if (cell.size() == rest.size()) break;
        rest.remove_prefix(cell.size() + 1);
    }
    ++count;
    if (count != columns.size())
        refuse("found " + std::to_string(count) + (count == 1 ? " number" : " numbers"),
               std::to_string(columns.size()));
}

std::uint64_t CsvHead::skip(std::string_view& lines) {
    if (isAtBeginning && lines.starts_with(kUtf8Mark)) lines.remove_prefix(kUtf8Mark.size());
    isAtBeginning = false;
    std::uint64_t count = 0;
    while (!isPassed && !lines.empty()) {
        std::string_view rest = lines;
        const std::string_view line = takeLine(rest);
        if (line.size() > kMaxLineBytes) break;
        const std::string_view text = trimmed(line);
        isPassed = isRow(text);
        if (isPassed && parseNumber(firstCell(text))) break;
        lines = rest;
        ++count;
    }
    return count;
}

void CsvRows::read(std::string_view lines, const CsvFormat& format) {
    numbers.clear();
    lineCount = 0;
    error.reset();
    try {
        while (!lines.empty()) {
            ++lineCount;
            format.parse(takeLine(lines), numbers);
        }
    } catch (const Error& lineError) {
        error = lineError;
    }
}

}  // namespace quarn::tool
