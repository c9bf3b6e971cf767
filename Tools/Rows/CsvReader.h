/// \file
/// Rows of numbers from comma-separated text, one by one. For commands that read their input in
/// order.
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
/// A first line whose first cell is no number is a header. Blank lines and lines that begin with #
/// are skipped. A byte order mark, carriage returns before line feeds and blanks around numbers are
/// accepted. The memory used does not grow with the input.
class CsvReader {
public:
    /// \param columnNames names of a row's numbers, for errors
    CsvReader(InputStream source, std::vector<std::string> columnNames);

    /// Reads the next row.
    /// \return false at the end of the input
    /// \throws Error with the number of a line that is not valid
    [[nodiscard]] bool next(std::vector<double>& numbers);

    /// Returns the name of the input, as errors show it.
    [[nodiscard]] const std::string& name() const { return blocks.name(); }

    /// True if the next row, if any, is available without waiting for the input.
    [[nodiscard]] bool hasBufferedLine() const { return !lines.empty(); }

private:
    LineBlockReader blocks;
    CsvFormat format;
    CsvHead head;
    std::string_view lines;  // of the block, those not parsed yet
    std::uint64_t line = 0;  // number of the line parsed last
};

}  // namespace quarn::tool
