/// \file
/// Bounds and centroid of a mesh.
#pragma once

#include <limits>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// The bounds of all corners, in which kNoUV counts as a UV, and the centroid of the mesh.
struct MeshBounds {
    Point<double, 3> min;
    Point<double, 3> max;
    Point<double, 2> uvMin;
    Point<double, 2> uvMax;
    /// Mean of the triangles' stored centroids, weighted by area; zero for a mesh without area.
    Point<double, 3> centroid;

    /// Returns true if a UV is within the closed bounds. False for NaN.
    [[nodiscard]] bool contains(const Point<double, 2>& uv) const {
        return uvMin[0] <= uv[0] && uv[0] <= uvMax[0] && uvMin[1] <= uv[1] && uv[1] <= uvMax[1];
    }
};

/// Computes the bounds of a mesh. Without triangles they are inverted: from the largest double to
/// its negative. O(n).
[[nodiscard]] MeshBounds boundsOf(const std::vector<Triangle>& triangles);

/// Returns true if any corner differs in UV from the first corner of the mesh. NaN differs from
/// everything, including itself. The quality of the UVs is not checked. False for an empty list.
/// O(n).
[[nodiscard]] bool hasVaryingUV(const std::vector<Triangle>& triangles);

}  // namespace quarn::detail
