/// \file
/// Boundary loops of a mesh, and the holes in it.
#pragma once

#include <cstdint>
#include <vector>

#include "MeshTopology.h"

namespace quarn {

/// A closed path along the boundary of an island that visits no vertex twice.
struct BoundaryLoop {
    std::uint32_t island = 0;          ///< One triangle, the same for all loops of an island.
    std::vector<std::uint32_t> edges;  ///< In the order of the path, see nextCorner().
    double length = 0.0;               ///< In the mesh's unit.
    bool isHole = false;
};

/// The boundary of a mesh. Corners are one vertex if position and UV agree, as for the boundary of
/// a screen. If any corner of the mesh has no UV, positions alone decide; otherwise each triangle
/// without UV would be an island.
struct MeshBoundary {
    /// The first triangle of each island, a component that is connected over edges. Triangles with
    /// repeated corners form no island.
    std::vector<std::uint32_t> islands;
    /// The longest loop of an island is its outer boundary. The others are holes, except loops that
    /// run along other islands alone: those are seams of the UV map.
    std::vector<BoundaryLoop> loops;
};

/// Finds the boundary loops of a mesh.
/// \param topology of the same triangles
[[nodiscard]] MeshBoundary findMeshBoundary(const std::vector<Triangle>& triangles,
                                            const MeshTopology& topology);

}  // namespace quarn
