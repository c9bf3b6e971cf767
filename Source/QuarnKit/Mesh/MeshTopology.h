/// \file
/// How the triangles of a mesh are connected in space.
#pragma once

#include <cstdint>
#include <vector>

#include "Edges.h"

namespace quarn {

/// The connectivity of a mesh. Corners with equal positions are one vertex.
struct MeshTopology {
    CornerIds corners;
    Edges edges;  ///< Of the triangles with `isUsed`.

    // By triangle:
    std::vector<bool> isDegenerate;  ///< With zero area, see isDegenerateTriangle().
    std::vector<bool> isDuplicate;   ///< With the three positions of an earlier triangle.
    std::vector<bool> isUsed;        ///< False for duplicates and for repeated corners.
    /// Number of the patch, whose triangles are connected over edges of exactly two triangles. Only
    /// such edges determine the orientation of one triangle from that of another.
    std::vector<std::uint32_t> patches;
    std::vector<bool> isFlipped;  ///< With the opposite winding of most of its patch.

    /// The first triangle of each connected component; any shared edge connects triangles.
    std::vector<std::uint32_t> components;
    /// By triangle, its index in `components`; 0 for triangles that are not used.
    std::vector<std::uint32_t> componentOf;
    /// The third triangle of each non-manifold edge, which has more than two.
    std::vector<std::uint32_t> nonManifold;
    /// One triangle for each edge across which no consistent orientation exists.
    std::vector<std::uint32_t> nonOrientable;
};

/// Builds the topology. Time and memory are about linear in the number of triangles.
/// \pre all positions are finite
[[nodiscard]] MeshTopology buildMeshTopology(const std::vector<Triangle>& triangles);

}  // namespace quarn
