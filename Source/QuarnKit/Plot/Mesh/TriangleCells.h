/// \file
/// The cells of a raster that a triangle covers.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include <QuarnScreen/Point.h>

namespace quarn {

/// A range of cells of a row or a column; `last` is before `first` if there is none.
struct CellRange {
    int first = 0;
    int last = -1;
};

/// The cells of a raster whose centers may be in a triangle.
class TriangleCells {
public:
    using Corners = std::array<Point<double, 2>, 3>;

    /// \param triangle in cells; the center of a cell has integer coordinates
    TriangleCells(const Corners& triangle, int columnCount, int rowCount)
        : corners(triangle),
          columns(columnCount),
          area(product(corners[1] - corners[0], corners[2] - corners[0])) {
        if (area == 0.0) return;
        const auto [bottom, top] = std::minmax({corners[0][1], corners[1][1], corners[2][1]});
        rowRange = within(bottom, top, rowCount);
    }

    /// Returns the rows that the triangle touches; none if it has no area.
    [[nodiscard]] CellRange rows() const { return rowRange; }
    /// Returns the columns of the bounding box.
    [[nodiscard]] CellRange allColumns() const {
        const auto [left, right] = std::minmax({corners[0][0], corners[1][0], corners[2][0]});
        return within(left, right, columns);
    }
    /// Returns the columns that the triangle touches in a row.
    [[nodiscard]] CellRange columnsOf(int row) const {
        double left = kFar;
        double right = -kFar;
        for (std::size_t i = 0; i < 3; ++i) {
            const Point<double, 2>& a = corners[i];
            const Point<double, 2>& b = corners[(i + 1) % 3];
            // Corners this far away are too inexact to be clipped.
            if (!(std::abs(a[0]) < kFar && std::abs(a[1]) < kFar)) return allColumns();
            if (std::max(a[1], b[1]) < row - kStrip || std::min(a[1], b[1]) > row + kStrip) continue;
            for (const double y : {row - kStrip, row + kStrip}) {
                const double x = crossing(a, b, y);
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
        return within(left - kStrip, right + kStrip, columns);
    }
    /// Returns the barycentric coordinates of a cell's center. A negative one means outside.
    [[nodiscard]] std::array<double, 3> barycentric(int column, int row) const {
        const Point<double, 2> middle(column, row);
        const double b = product(middle - corners[0], corners[2] - corners[0]) / area;
        const double c = product(corners[1] - corners[0], middle - corners[0]) / area;
        return {1.0 - b - c, b, c};
    }

private:
    // Half of the height of the strip around the centers of a row, in cells. It is wider than the
    // tolerances with which callers decide what is inside.
    static constexpr double kStrip = 1e-3;
    static constexpr double kFar = 1e7;

    static double product(const Point<double, 2>& a, const Point<double, 2>& b) {
        return a[0] * b[1] - a[1] * b[0];
    }
    // Returns x of a side at y, or at its end that is nearest to y.
    static double crossing(const Point<double, 2>& a, const Point<double, 2>& b, double y) {
        const double rise = b[1] - a[1];
        if (rise == 0.0) return y < a[1] ? a[0] : b[0];
        return a[0] + (b[0] - a[0]) * std::clamp((y - a[1]) / rise, 0.0, 1.0);
    }
    static CellRange within(double min, double max, int count) {
        return {.first = static_cast<int>(std::clamp(std::ceil(min), 0.0, static_cast<double>(count))),
                .last = static_cast<int>(std::clamp(std::floor(max), -1.0, count - 1.0))};
    }

    const Corners& corners;
    int columns;
    double area;
    CellRange rowRange;
};

}  // namespace quarn
