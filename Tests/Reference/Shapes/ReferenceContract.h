/// \file
/// Reference implementation of the algorithms that all shapes share, for comparison bit for bit.
#pragma once

#include <optional>
#include <vector>

#include "Support/GeometryBits.h"

namespace quarn::test {

/// The UVs that a grid visits, in order.
std::vector<Point2> gridPath(int density);

/// The UVs of the four edges of the boundary, in order.
std::vector<std::vector<Point2>> boundaryPath();

/// What the search for the closest hit is given by the screen.
struct ClosestQuery {
    Point3 from;
    std::vector<Intersection> forward;
    std::vector<Intersection> backward;
    Point3 closestPoint;
    Point2 mappedUV;
};

/// The closest hit, or nothing.
std::optional<Intersection> closestHit(const ClosestQuery& query);

}  // namespace quarn::test
