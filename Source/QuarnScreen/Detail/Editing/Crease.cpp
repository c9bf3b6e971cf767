#include "Crease.h"

#include <limits>

namespace quarn::detail {
namespace {

// Distance at which corners count as one, in the mesh's unit.
constexpr double kSameCornerDistance = 1e-6;

// Corners of the first triangle, one for each corner of the second at the same position.
std::vector<Point<double, 3>> sharedCorners(const Triangle& a, const Triangle& b) {
    std::vector<Point<double, 3>> shared;
    for (const TriangleVertex& corner : a.vertices)
        for (const TriangleVertex& other : b.vertices)
            if (length(corner.position - other.position) < kSameCornerDistance)
                shared.push_back(corner.position);
    return shared;
}

}  // namespace

Crease sharpestCrease(const std::vector<const Triangle*>& triangles) {
    Crease sharpest;
    double least = std::numeric_limits<double>::max();
    // A triangle is paired with itself as well, and shares three corners or more with it unless one is NaN.
    for (const Triangle* a : triangles) {
        for (const Triangle* b : triangles) {
            const std::vector<Point<double, 3>> shared = sharedCorners(*a, *b);
            if (shared.size() != 2) continue;
            const double alike = dot(a->normal, b->normal);
            if (!(least > alike)) continue;
            least = alike;
            sharpest = {shared[0], shared[1]};
        }
    }
    return sharpest;
}

Point<double, 3> closestOn(const Crease& crease, const Point<double, 3>& point) {
    const Point<double, 3> along = crease.second - crease.first;
    const double t = dot(along, point - crease.first) / dot(along, along);
    if (t >= 0.0 && t <= 1.0) return crease.first + t * along;
    return t > 1.0 ? crease.second : crease.first;
}

}  // namespace quarn::detail
