/// \file
/// The order of calibration points.
#pragma once

#include <cstddef>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Positions column by column, each column from its first row to its last; none where a count is not
/// positive.
/// \param column called with the index of a column; it returns what makes a position from the index of a row
template <class Column>
[[nodiscard]] std::vector<Point<double, 3>> columnByColumn(int columns, int rows, Column column) {
    if (columns <= 0 || rows <= 0) return {};
    std::vector<Point<double, 3>> points;
    points.reserve(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    for (int i = 0; i < columns; ++i) {
        const auto pointOfRow = column(i);
        for (int j = 0; j < rows; ++j) points.push_back(pointOfRow(j));
    }
    return points;
}

}  // namespace quarn::detail
