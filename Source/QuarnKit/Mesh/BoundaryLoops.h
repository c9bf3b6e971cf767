/// \file
/// The outline of a mesh and the holes in it.
#pragma once

#include <cstdint>
#include <vector>

#include "MeshTopology.h"

namespace quarn {

/// A closed walk along the rim of an island that visits no corner twice.
struct BoundaryLoop {
    std::uint32_t island = 0;          ///< Any triangle stands for it.
    std::vector<std::uint32_t> edges;  ///< In walking order, see nextCorner().
    double length = 0.0;
    bool isHole = false;
};

/// The loops of a mesh. As for the screen's own outline, corners are one where position and UV agree; where a corner has
/// no UV, positions decide alone, as else each triangle without UV would be an island.
struct MeshBoundary {
    /// The first triangle of each island: a part that hangs together over edges. Triangles without area alone are none.
    std::vector<std::uint32_t> islands;
    /// The longest one of an island is its outline. The others are holes, but for those that run along other islands
    /// alone: there the UV map is in parts, and the topology has no hole.
    std::vector<BoundaryLoop> loops;
};

[[nodiscard]] MeshBoundary findMeshBoundary(const std::vector<Triangle>& triangles,
                                            const MeshTopology& topology);

}  // namespace quarn
