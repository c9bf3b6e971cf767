/// \file
/// Rows of numbers from comma-separated text, one by one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Rows/CsvRows.h"
#include "Rows/LineBlockReader.h"

namespace quarn::tool {

/// Reads rows of a fixed count of numbers, one row a line.
///
/// A first line whose first cell is no number is a header. Blank lines and lines that begin with # are
/// skipped; a byte order mark, carriage returns before line feeds and blanks around numbers are accepted.
/// Everything else stops with a Error that names the line. The memory used does not grow with the input.
class CsvReader {
public:
    /// \param columnNames what the numbers of a row are called in errors
    CsvReader(InputStream source, std::vector<std::string> columnNames);

    /// Reads the next row. \return false at the end of the input.
    [[nodiscard]] bool next(std::vector<double>& numbers);

    /// What error lines call the input.
    [[nodiscard]] const std::string& name() const { return blocks.name(); }

    /// Whether the next row, if there is one, is at hand without waiting for the input.
    [[nodiscard]] bool hasBufferedLine() const { return !lines.empty(); }

private:
    LineBlockReader blocks;
    CsvFormat format;
    CsvHead head;
    std::string_view lines;  // of the block, those that were not handed out
    std::uint64_t line = 0;  // number of the line that was handed out last
};

}  // namespace quarn::tool
