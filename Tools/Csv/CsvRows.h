/// \file
/// Parsed rows of a CSV input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/Error.h>

#include "Csv/CsvFormat.h"
#include "Csv/RowSplitter.h"

namespace quarn::tool {

/// The rows of several lines.
struct CsvRows {
    std::vector<double> numbers;           ///< Row after row; NaN in empty rows.
    std::vector<std::string_view> passed;  ///< Cells to pass on, row after row, in the lines.
    std::vector<std::size_t> emptyRows;    ///< Indexes of rows whose numbers are all empty cells.
    std::uint64_t lineCount = 0;           ///< Parsed lines, up to the first one of an invalid row.
    std::optional<Error> error = {};       ///< The error of the last row, if it is not valid.

    /// Replaces the contents by the rows of \p lines, up to the first one that is not valid.
    void read(std::string_view lines, const CsvFormat& format, const RowSplitter& splitter);

    void clear();
};

}  // namespace quarn::tool
