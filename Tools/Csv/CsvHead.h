/// \file
/// The beginning of a CSV input, from which the format of its rows follows.
#pragma once

#include <cstdint>
#include <string>

#include "Csv/CsvFormat.h"
#include "Csv/InputColumns.h"
#include "Csv/LineBlockReader.h"

namespace quarn::tool {

/// The format of the rows after the head of an input.
struct CsvHead {
    CsvFormat format;
    std::uint64_t lineCount = 0;  ///< Lines before the first row of numbers.
};

/// Reads a CSV input up to its first row of numbers, which becomes the beginning of the next block.
///
/// A byte order mark, blank lines and lines that begin with # are skipped. Then the first row is a
/// header if none of its cells is a number. The separator is the one that the first row contains: a
/// semicolon, a tab, a comma, or blanks.
/// \param unit the unit of all lengths
/// \throws Error if there is no row, the header has no known columns, or a column another unit
[[nodiscard]] CsvHead readCsvHead(LineBlockReader& blocks, const InputColumns& columns,
                                  const std::string& unit);

}  // namespace quarn::tool
