/// \file
/// Order of calibration points.
#pragma once

#include <cstddef>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Returns positions column by column, each column from its first to its last row; empty if a count
/// is not positive.
/// \param columns, rows size of the grid
/// \param column called with the index of a column; returns a function from the index of a row to
///        its position
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
