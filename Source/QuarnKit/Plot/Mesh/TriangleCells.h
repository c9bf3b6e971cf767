/// \file
/// The cells of a raster that a triangle covers.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Calls \p visit with the column and the row of each cell whose center may be in a triangle, and
/// with the barycentric coordinates of the center. A negative coordinate means outside.
/// \param corners in cells; the center of a cell has integer coordinates
template <class Visitor>
void visitCells(const std::array<Point<double, 2>, 3>& corners, int columns, int rows, const Visitor& visit) {
    const auto& [p, q, r] = corners;
    const auto product = [](const Point<double, 2>& a, const Point<double, 2>& b) {
        return a[0] * b[1] - a[1] * b[0];
    };
    const double area = product(q - p, r - p);
    if (area == 0.0) return;
    const auto first = [](double min, int count) {
        return static_cast<int>(std::clamp(std::ceil(min), 0.0, static_cast<double>(count)));
    };
    const auto last = [](double max, int count) {
        return static_cast<int>(std::clamp(std::floor(max), -1.0, count - 1.0));
    };
    const auto [left, right] = std::minmax({p[0], q[0], r[0]});
    const auto [top, bottom] = std::minmax({p[1], q[1], r[1]});
    for (int row = first(top, rows); row <= last(bottom, rows); ++row) {
        for (int column = first(left, columns); column <= last(right, columns); ++column) {
            const Point<double, 2> middle(column, row);
            const double b = product(middle - p, r - p) / area;
            const double c = product(q - p, middle - p) / area;
            visit(column, row, 1.0 - b - c, b, c);
        }
    }
}

}  // namespace quarn
