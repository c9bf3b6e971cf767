/// \file
/// Reference implementation of the query for rays that pass a mesh.
#pragma once

#include <vector>

#include <QuarnScreen/Boundary.h>
#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Ray.h>

#include "Support/GeometryBits.h"

namespace quarn::test {

/// A position on a ray, and what led to it.
struct ReferenceNearest {
    /// Which of the two segments at the chosen boundary point the ray came nearest to.
    enum class Way { NoPoint, SinglePoint, NeitherSegment, OnlyFirst, OnlySecond, First, Second, Count };

    Point3 position;
    Way way = Way::NoPoint;
    int chosen = -1;  // index of the boundary point
};

/// Index of the boundary point that lies most nearly on the ray's line as seen from its target, or
/// -1.
[[nodiscard]] int referenceBoundaryPoint(const Boundary& outline, const Ray& ray, int normalSign);

[[nodiscard]] ReferenceNearest referenceNearestToBoundary(const Boundary& outline, const Ray& ray,
                                                          int normalSign);

/// The given hits that face the wanted way, or else the ray's position nearest to the boundary.
[[nodiscard]] IntersectionSet referencePastTheEdge(const std::vector<Triangle>& triangles,
                                                   const IntersectionSet& hits, const Boundary& outline,
                                                   const Ray& ray, int normalSign);

}  // namespace quarn::test
