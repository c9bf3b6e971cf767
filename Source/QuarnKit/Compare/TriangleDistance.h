/// \file
/// How far a position is from a triangle.
#pragma once

#include <array>

#include <QuarnScreen/Point.h>

namespace quarn {

/// The corners of a triangle.
using Corners = std::array<Point<double, 3>, 3>;

/// The position of a triangle that is nearest to \p point. A triangle without area is its longest edge.
/// \pre all coordinates are finite, and none beyond 1e38
[[nodiscard]] Point<double, 3> nearestOnTriangle(const Point<double, 3>& point, const Corners& triangle);

[[nodiscard]] inline double squaredDistance(const Point<double, 3>& a, const Point<double, 3>& b) {
    const Point<double, 3> difference = b - a;
    return dot(difference, difference);
}

[[nodiscard]] inline double squaredDistance(const Point<double, 3>& point, const Corners& triangle) {
    return squaredDistance(point, nearestOnTriangle(point, triangle));
}

}  // namespace quarn
