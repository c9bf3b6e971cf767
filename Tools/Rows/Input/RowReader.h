/// \file
/// Rows of CSV text, one by one. For commands that read their input in order.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "Csv/CsvHead.h"
#include "Csv/CsvRows.h"
#include "Csv/LineBlockReader.h"

namespace quarn::tool {

/// Reads rows of a fixed count of numbers; see readCsvHead() for what an input may look like. The
/// memory used does not grow with the input.
class CsvReader {
public:
    /// \param unit the unit of all lengths
    /// \throws Error as readCsvHead()
    CsvReader(InputStream source, const InputColumns& columns, const std::string& unit);

    /// Reads the next row.
    /// \return false at the end of the input
    /// \throws Error with the number of a line that is not valid, or if there is no row at all
    [[nodiscard]] bool next();

    /// Returns the numbers of the row; none if all of their cells are empty.
    [[nodiscard]] std::span<const double> numbers() const;

    /// Returns the cells of the row to pass on, valid until the next row.
    [[nodiscard]] std::span<const std::string_view> passedCells() const { return row.passed; }

    /// Returns the format, whose columns to pass on may be selected before the first row.
    [[nodiscard]] CsvFormat& format() { return head.format; }

    /// Returns the name of the input, as errors show it.
    [[nodiscard]] const std::string& name() const { return blocks.name(); }

    /// True if the next row, if any, is available without waiting for the input.
    [[nodiscard]] bool hasBufferedLine() const { return !lines.empty(); }

private:
    LineBlockReader blocks;
    CsvHead head;
    CsvRows row;
    std::string_view lines;  // of the block, those not parsed yet
    std::uint64_t line = 0;  // number of the line parsed last
    bool hasRows = false;
};

}  // namespace quarn::tool
