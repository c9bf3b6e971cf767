/// \file
/// The distance between a position and a triangle.
#pragma once

#include <QuarnKit/Mesh/TriangleCorners.h>

namespace quarn {

/// Returns the position on a triangle that is nearest to \p point. A triangle with zero area counts
/// as its longest edge.
/// \pre all coordinates are finite and within the range of floats
[[nodiscard]] Point<double, 3> nearestOnTriangle(const Point<double, 3>& point,
                                                 const TriangleCorners& triangle);

/// Returns the square of a distance.
[[nodiscard]] inline double squaredDistance(const Point<double, 3>& a, const Point<double, 3>& b) {
    const Point<double, 3> difference = b - a;
    return dot(difference, difference);
}

[[nodiscard]] inline double squaredDistance(const Point<double, 3>& point, const TriangleCorners& triangle) {
    return squaredDistance(point, nearestOnTriangle(point, triangle));
}

}  // namespace quarn
