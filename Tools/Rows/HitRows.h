/// \file
/// Rows that report a hit or its absence. For the commands intersect and nearest.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <QuarnScreen/IScreenGeometry.h>

#include "Rows/ResultRows.h"

namespace quarn::tool {

/// The cells of a row.
using HitRow = std::array<Cell, 10>;

/// Returns the columns of a row: \p number counts the rows of the input, \p last is specific to the
/// command.
[[nodiscard]] std::vector<Column> hitColumns(const std::string& number, const Column& last);

/// Returns the row of a hit, with \p last in the command's own column.
[[nodiscard]] HitRow hitRow(std::int64_t number, const Intersection& hit, double last,
                            std::string_view status = "hit");

/// Returns the row of an input without hit, with the status kEmptyRow for an input without numbers.
[[nodiscard]] HitRow missRow(std::int64_t number, std::string_view status);

}  // namespace quarn::tool
