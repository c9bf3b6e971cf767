/// \file
/// Rows of the commands that compute a position or direction for each position of the input.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>

#include "Rows/QueryResults.h"

namespace quarn::tool {

struct PointOptions : QueryOptions {
    std::string points = "-";
};

/// Computes the result for a position; empty if there is none.
using PointQuery = std::optional<Point<double, 3>> (*)(const Screen& screen, const Point<double, 3>& point);

/// Writes a row for each position, with the status "found", "none" or kEmptyRow.
/// \param columns the three columns of the result
/// \throws Error if the screen or the input cannot be read; NegativeResult as
/// QueryResults::finish()
void runPointQuery(const std::string& command, const std::vector<Column>& columns,
                   const PointOptions& options, PointQuery query);

}  // namespace quarn::tool
