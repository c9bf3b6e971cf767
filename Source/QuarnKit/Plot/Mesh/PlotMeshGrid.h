/// \file
/// Lines on the triangles of a mesh.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include <QuarnKit/Mesh/TriangleCorners.h>

namespace quarn {

[[nodiscard]] double lineLength(const std::vector<Point<double, 3>>& line);

/// Edges between positions as lines that are as long as can be, the longest one first.
[[nodiscard]] std::vector<std::vector<Point<double, 3>>> buildEdgeLines(
    const std::vector<Point<double, 3>>& positions,
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& edges);

/// Where u or v is a multiple of 1/8, as in PlotSurface, within the range of the UVs.
/// \param triangles of a mesh of size 1; ends that are the same on a page are joined
[[nodiscard]] std::vector<std::vector<Point<double, 3>>> uvGridLines(
    const std::vector<TriangleCorners>& triangles, const std::vector<TriangleUVs>& uvs);

}  // namespace quarn
