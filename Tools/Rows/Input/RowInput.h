/// \file
/// Rows of numbers from an input of any format, in blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/InputStream.h>

#include "Csv/CsvFormat.h"
#include "Csv/CsvRows.h"
#include "Csv/InputColumns.h"

namespace quarn::tool {

/// The rows of an input, as CSV or as a NumPy array. The memory used does not grow with the input.
class RowInput {
public:
    RowInput() = default;
    RowInput(const RowInput&) = delete;
    RowInput& operator=(const RowInput&) = delete;
    virtual ~RowInput() = default;

    /// Reads the next block: the rows that are available, as far as they fit into it. Waits for
    /// input only if no row is complete.
    /// \return number of the block's parts; 0 at the end of the input
    /// \throws Error if the input cannot be read
    [[nodiscard]] virtual std::size_t nextBlock() = 0;

    /// Replaces the contents of \p rows by the rows of a part of the block, up to the first one
    /// that is not valid. They are valid until the next call of nextBlock(). Different parts may be
    /// parsed on different threads.
    virtual void parse(std::size_t part, CsvRows& rows) const = 0;

    /// Returns the count of numbers in a row.
    [[nodiscard]] virtual std::size_t numberCount() const = 0;

    /// Selects the cells to pass on before the first block, as CsvFormat::passColumns() does. An
    /// array has none.
    [[nodiscard]] virtual std::vector<PassedColumn> passColumns(
        const std::vector<std::string>& namesInUse) = 0;

    /// Returns the count of lines before the first row; 0 if the format has no lines.
    [[nodiscard]] virtual std::uint64_t headLineCount() const = 0;

    /// Returns the error of an input without rows.
    [[nodiscard]] virtual Error noRowsError() const = 0;

    /// Returns the name of the input, as errors show it.
    [[nodiscard]] virtual const std::string& name() const = 0;
};

/// Reads the beginning of an input, whose first bytes determine its format.
/// \param unit the unit of all lengths
/// \param blockBytes size of a block, unless a row is longer
/// \throws Error as readCsvHead(), or if an array has other numbers than \p columns
[[nodiscard]] std::unique_ptr<RowInput> openRowInput(InputStream source, const InputColumns& columns,
                                                     const std::string& unit, std::size_t blockBytes);

}  // namespace quarn::tool
