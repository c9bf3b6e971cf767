#include "Csv.h"

#include "Message.h"
#include "NumberText.h"
#include "ToolError.h"

namespace quarn {

namespace {

constexpr std::size_t kReadSize = 65536;
// A line of a million bytes holds no row of numbers; without a limit an endless line would fill the memory.
constexpr std::size_t kLongestLine = 1000000;

std::string_view firstCell(std::string_view text) {
    return text.substr(0, text.find(','));
}

}  // namespace

CsvReader::CsvReader(InputFile source, std::vector<std::string> columnNames)
    : input(std::move(source)), columns(std::move(columnNames)) {}

bool CsvReader::next(std::vector<double>& numbers) {
    std::string_view text;
    while (nextLine(text)) {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (line == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
        text = trimmed(text);
        if (text.empty() || text.starts_with('#') || isHeader(text)) continue;
        parse(text, numbers);
        return true;
    }
    return false;
}

bool CsvReader::isHeader(std::string_view text) {
    const bool isFirst = mayBeHeader;
    mayBeHeader = false;
    return isFirst && !parseNumber(firstCell(text));
}

bool CsvReader::nextLine(std::string_view& text) {
    std::size_t searched = position;
    std::size_t end = buffer.find('\n', searched);
    while (end == std::string::npos) {
        const std::size_t length = buffer.size() - position;
        if (length > kLongestLine)
            throw ToolError{.found = "found a line of more than " + std::to_string(kLongestLine) + " bytes",
                            .expected = std::to_string(columns.size()) + " numbers",
                            .file = input.name(),
                            .line = line + 1};
        if (!fill()) break;
        searched = length;  // fill() has moved the line to the buffer's start
        end = buffer.find('\n', searched);
    }
    if (end == std::string::npos && position == buffer.size()) return false;
    end = std::min(end, buffer.size());
    text = std::string_view(buffer).substr(position, end - position);
    position = std::min(end + 1, buffer.size());
    ++line;
    return true;
}

bool CsvReader::fill() {
    buffer.erase(0, position);
    position = 0;
    const std::size_t length = buffer.size();
    buffer.resize(length + kReadSize);
    const std::size_t count = input.read(buffer.data() + length, kReadSize);
    buffer.resize(length + count);
    return count > 0;
}

void CsvReader::parse(std::string_view text, std::vector<double>& numbers) const {
    numbers.clear();
    std::string names;
    for (const std::string& column : columns) names += names.empty() ? column : "," + column;

    std::size_t count = 0;
    for (std::string_view rest = text;; ++count) {
        const std::string_view cell = firstCell(rest);
        if (count < columns.size()) {
            const auto number = parseNumber(cell);
            if (!number)
                throw ToolError{.found = "found " + quotedExcerpt(trimmed(cell)),
                                .expected = "a number for " + columns[count] + " (" + names + ")",
                                .file = input.name(),
                                .line = line};
            numbers.push_back(*number);
        }
        if (cell.size() == rest.size()) break;
        rest.remove_prefix(cell.size() + 1);
    }
    ++count;
    if (count != columns.size())
        throw ToolError{.found = "found " + std::to_string(count) + (count == 1 ? " number" : " numbers"),
                        .expected = std::to_string(columns.size()) + " (" + names + ")",
                        .file = input.name(),
                        .line = line};
}

}  // namespace quarn
