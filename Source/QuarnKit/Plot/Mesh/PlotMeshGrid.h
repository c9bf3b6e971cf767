/// \file
/// Lines on the triangles of a mesh.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include <QuarnKit/Mesh/TriangleCorners.h>

namespace quarn {

/// Returns the length of a polyline.
[[nodiscard]] double lineLength(const std::vector<Point<double, 3>>& line);

/// Joins edges between positions to polylines, the longest one first.
/// \param edges pairs of indices of \p positions
[[nodiscard]] std::vector<std::vector<Point<double, 3>>> buildEdgeLines(
    const std::vector<Point<double, 3>>& positions,
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& edges);

/// Returns the lines of the UV grid: u or v is a multiple of 1/8 from 0 to 1. The boundary replaces
/// the line at 1 if no UV exceeds 1.
/// \param triangles triangles of a mesh of size 1; ends closer than a pixel are joined
[[nodiscard]] std::vector<std::vector<Point<double, 3>>> uvGridLines(
    const std::vector<TriangleCorners>& triangles, const std::vector<TriangleUVs>& uvs);

}  // namespace quarn
