#include "TriangleDistance.h"

#include <algorithm>
#include <cmath>

#include <Common/Detail/Assert.h>

namespace quarn {

namespace {

// Square of the minimum sine between two edges for which the projection alone decides. In thinner
// triangles rounding may decide for the wrong side of an edge, so that the edges are checked as
// well.
constexpr double kMinSquaredSine = 1e-10;

Point<double, 3> nearestOnEdge(const Point<double, 3>& point, const Point<double, 3>& from,
                               const Point<double, 3>& to) {
    const Point<double, 3> edge = to - from;
    const double squaredLength = dot(edge, edge);
    if (!(squaredLength > 0.0)) return from;
    return from + edge * std::clamp(dot(point - from, edge) / squaredLength, 0.0, 1.0);
}

}  // namespace

Point<double, 3> nearestOnTriangle(const Point<double, 3>& point, const TriangleCorners& triangle) {
    const auto& [a, b, c] = triangle;
    const Point<double, 3> edge1 = b - a;
    const Point<double, 3> edge2 = c - a;
    const Point<double, 3> offset = point - a;
    const Point<double, 3> normal = cross(edge1, edge2);
    const double squaredNormal = dot(normal, normal);
    // Neither is finite for coordinates far beyond the range of floats.
    QUARN_ASSERT(std::isfinite(squaredNormal) && std::isfinite(dot(offset, offset)));

    Point<double, 3> nearest = a;
    double minSquared = squaredDistance(point, a);
    const auto take = [&](const Point<double, 3>& candidate) {
        const double distance = squaredDistance(point, candidate);
        if (!(distance < minSquared)) return;
        minSquared = distance;
        nearest = candidate;
    };
    // The projection is a combination of the corners, so that it is in the triangle even if
    // rounding decides for the wrong side.
    const double along1 = dot(cross(offset, edge2), normal);
    const double along2 = dot(cross(edge1, offset), normal);
    if (along1 >= 0.0 && along2 >= 0.0 && along1 + along2 <= squaredNormal && squaredNormal > 0.0) {
        const Point<double, 3> projection =
            a + edge1 * (along1 / squaredNormal) + edge2 * (along2 / squaredNormal);
        if (squaredNormal > kMinSquaredSine * dot(edge1, edge1) * dot(edge2, edge2)) return projection;
        take(projection);
    }
    take(nearestOnEdge(point, a, b));
    take(nearestOnEdge(point, b, c));
    take(nearestOnEdge(point, c, a));
    return nearest;
}

}  // namespace quarn
