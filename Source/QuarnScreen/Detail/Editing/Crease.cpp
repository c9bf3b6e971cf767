#include "Crease.h"

#include <limits>

namespace quarn::detail {
namespace {

// Distance below which two corners are the same, in the mesh's unit.
constexpr double kSameCornerDistance = 1e-6;

// Returns corners of the first triangle: one for each pair with a corner of the second triangle at
// the same position.
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
    double smallest = std::numeric_limits<double>::max();
    // A triangle is also paired with itself. It is skipped then, because it shares at least three
    // corners with itself, unless one of them is NaN.
    for (const Triangle* a : triangles) {
        for (const Triangle* b : triangles) {
            const std::vector<Point<double, 3>> shared = sharedCorners(*a, *b);
            if (shared.size() != 2) continue;
            const double alike = dot(a->normal, b->normal);
            if (!(smallest > alike)) continue;
            smallest = alike;
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
