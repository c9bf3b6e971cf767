/// \file
/// Rows of an input, one by one. For commands that read their input in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "Rows/Input/RowInput.h"

namespace quarn::tool {

/// Reads the rows of a RowInput in their order. The memory used does not grow with the input.
class RowReader {
public:
    /// \param unit the unit of all lengths
    /// \throws Error as openRowInput()
    RowReader(InputStream source, const InputColumns& columns, const std::string& unit);

    /// Reads the next row.
    /// \return false at the end of the input
    /// \throws Error with the number of a line that is not valid, or if there is no row at all
    [[nodiscard]] bool next();

    /// Returns the numbers of the row; none if all of their cells are empty.
    [[nodiscard]] std::span<const double> numbers() const;

    /// Returns the cells of the row to pass on, valid until the next row.
    [[nodiscard]] std::span<const std::string_view> passedCells() const;

    /// Returns the input, whose columns to pass on may be selected before the first row.
    [[nodiscard]] RowInput& input() { return *rowInput; }

    /// Returns the name of the input, as errors show it.
    [[nodiscard]] const std::string& name() const { return rowInput->name(); }

    /// True if the next row, if any, is available without waiting for the input.
    [[nodiscard]] bool hasBufferedRow() const { return nextRow < rowCount || nextPart < partCount; }

private:
    [[nodiscard]] bool parseNextPart();

    std::unique_ptr<RowInput> rowInput;
    CsvRows rows;               // of the current part
    std::size_t partCount = 0;  // of the block
    std::size_t nextPart = 0;
    std::size_t rowCount = 0;  // in `rows`
    std::size_t nextRow = 0;
    std::uint64_t lineCount;  // lines of the parts before the next one
    bool hasRows = false;
};

}  // namespace quarn::tool
