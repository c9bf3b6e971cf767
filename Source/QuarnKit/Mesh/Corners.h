/// \file
/// Corners of a mesh that are the same vertex.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn {

/// What has to be equal, bit for bit except for the sign of zero, in two corners of one vertex.
enum class CornerIdentity { Position, PositionAndUV };

/// By triangle: the vertices of its corners, numbered from 0 without gaps in order of appearance.
using CornerIds = std::vector<std::array<std::uint32_t, 3>>;

/// Numbers the vertices of a mesh.
/// \pre all coordinates are finite
[[nodiscard]] CornerIds buildCornerIds(const std::vector<Triangle>& triangles, CornerIdentity identity);

/// Returns true if two corners of a triangle are the same vertex.
[[nodiscard]] inline bool hasRepeatedCorner(const std::array<std::uint32_t, 3>& corners) {
    return corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0];
}

}  // namespace quarn
