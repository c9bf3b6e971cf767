/// \file
/// How the triangles of a mesh hang together.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

using TriangleCorners = std::array<Point<double, 3>, 3>;
using TriangleUVs = std::array<Point<double, 2>, 3>;

/// A walk along edges that only one triangle has.
struct EdgeLoop {
    std::vector<Point<double, 3>> points;  ///< The first one is repeated as the last where the walk closes.
    std::vector<std::uint32_t> edges;      ///< In walking order.
    std::uint32_t piece = 0;
};

/// Facts about a mesh whose corners are one where their positions are equal.
///
/// An edge's number is 3 * t + c for the edge of triangle t from its corner c to the next one. Triangles with two
/// equal corners, and edges of three and more triangles, join nothing.
struct MeshTopology {
    std::vector<EdgeLoop> loops;
    /// Edges between two triangles whose UVs differ at both ends; both numbers of each edge.
    std::vector<std::uint32_t> seams;
    /// For each triangle, whether it turns its other side than most of its piece.
    std::vector<bool> isTurned;
    std::uint32_t pieces = 0;  ///< Triangles that share edges are one piece.
};

/// \param triangles of finite positions
/// \param uvs as many, or none
[[nodiscard]] MeshTopology topologyOf(const std::vector<TriangleCorners>& triangles,
                                      const std::vector<TriangleUVs>& uvs);

}  // namespace quarn
