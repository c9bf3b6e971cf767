/// \file
/// Commands that query a position or direction for each position of the input.
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

/// What a screen answers for a position; nothing where it has no query.
using PointQuery = std::optional<Point<double, 3>> (*)(const Screen& screen, const Point<double, 3>& point);

/// Writes a row for each position, with the status "found" or "none".
/// \param columns three, those of the query
void runPointQuery(const std::string& command, const std::vector<Column>& columns,
                   const PointOptions& options, PointQuery query);

}  // namespace quarn::tool
