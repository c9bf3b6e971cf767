/// \file
/// Rows that tell of a hit or its absence.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <QuarnScreen/IScreenGeometry.h>

#include "Rows/ResultRows.h"

namespace quarn::tool {

/// The cells of such a row.
using HitRow = std::array<Cell, 10>;

/// The columns of a hit: \p number counts the lines of the input, \p last is the command's own.
[[nodiscard]] std::vector<Column> hitColumns(const std::string& number, const Column& last);

/// The row of a hit, with \p last in the command's own column.
[[nodiscard]] HitRow hitRow(std::int64_t number, const Intersection& hit, double last,
                            std::string_view status = "hit");

/// The row where there is no hit.
[[nodiscard]] HitRow missRow(std::int64_t number, std::string_view status);

/// The hit with its UV; shapes that do not tell it with the hit are asked for it.
[[nodiscard]] Intersection withUV(Intersection hit, const IScreenGeometry& geometry);

}  // namespace quarn::tool
