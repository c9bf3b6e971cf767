/// \file
/// Extent and centre of a mesh.
#pragma once

#include <limits>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Bounds of all corners, kNoUV counted like any UV, and the mean of the centroids.
struct MeshBounds {
    Point<double, 3> min;
    Point<double, 3> max;
    Point<double, 2> uvMin;
    Point<double, 2> uvMax;
    /// Mean of the triangles' stored centroids, weighted by their areas; zero where there is no area.
    Point<double, 3> centroid;

    /// Whether a UV lies within the bounds, ends included; a NaN does not.
    [[nodiscard]] bool contains(const Point<double, 2>& uv) const {
        return uvMin[0] <= uv[0] && uv[0] <= uvMax[0] && uvMin[1] <= uv[1] && uv[1] <= uvMax[1];
    }
};

/// Bounds of a mesh. Those of no triangles are inverted: from the greatest double to its negative.
[[nodiscard]] MeshBounds boundsOf(const std::vector<Triangle>& triangles);

/// Whether the UV of some corner differs from that of the very first one. It says nothing about the quality
/// of the UVs; a NaN differs from everything, itself included. False for an empty list.
[[nodiscard]] bool hasVaryingUV(const std::vector<Triangle>& triangles);

}  // namespace quarn::detail
