/// \file
/// How the triangles of a mesh hang together in space.
#pragma once

#include <cstdint>
#include <vector>

#include "Edges.h"

namespace quarn {

/// The surface that triangles make, whose corners are one where their positions are equal.
struct MeshTopology {
    CornerIds corners;
    Edges edges;  ///< Of the triangles that are used.

    // By triangle:
    std::vector<bool> isDegenerate;  ///< Without area.
    std::vector<bool> isDuplicate;   ///< With the three positions of an earlier one.
    std::vector<bool> isUsed;        ///< Neither a duplicate nor one with two equal corners.
    /// A number for each part whose triangles are joined by edges of just two, as over these alone it is sure which way
    /// round a triangle should run.
    std::vector<std::uint32_t> patches;
    std::vector<bool> isFlipped;  ///< It runs the other way round than most of its sheet.

    /// The first triangle of each part that hangs together over edges.
    std::vector<std::uint32_t> components;
    /// The third triangle of each edge that has more than two.
    std::vector<std::uint32_t> nonManifold;
    /// A triangle at each edge over which no way round fits.
    std::vector<std::uint32_t> nonOrientable;
};

/// \pre all positions are finite
[[nodiscard]] MeshTopology buildMeshTopology(const std::vector<Triangle>& triangles);

}  // namespace quarn
