/// \file
/// Rows of numbers from comma-separated text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "InputFile.h"

namespace quarn {

/// Reads rows of a fixed count of numbers, one row a line.
///
/// A first line whose first cell is no number is a header. Blank lines and lines that begin with # are
/// skipped; a byte order mark, carriage returns before line feeds and blanks around numbers are accepted.
/// Everything else stops with a ToolError that names the line. The memory used does not grow with the input.
class CsvReader {
public:
    /// \param columnNames what the numbers of a row are called in errors
    CsvReader(InputFile source, std::vector<std::string> columnNames);

    /// Reads the next row. \return false at the end of the input.
    [[nodiscard]] bool next(std::vector<double>& numbers);

    /// What error lines call the input.
    [[nodiscard]] const std::string& name() const { return input.name(); }

    /// Whether the next row, if there is one, is at hand without waiting for the input.
    [[nodiscard]] bool hasBufferedLine() const { return buffer.find('\n', position) != std::string::npos; }

private:
    [[nodiscard]] bool nextLine(std::string_view& text);
    [[nodiscard]] bool fill();
    [[nodiscard]] bool isHeader(std::string_view text);
    void parse(std::string_view text, std::vector<double>& numbers) const;

    InputFile input;
    std::vector<std::string> columns;
    std::string buffer;
    std::size_t position = 0;  // of the first byte of `buffer` that was not handed out
    std::uint64_t line = 0;    // number of the line that was handed out last
    bool mayBeHeader = true;
};

}  // namespace quarn
