/// \file
/// Which corners of a mesh are one.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn {

/// What two corners have to agree in, exactly, to be one.
enum class CornerIdentity { Position, PositionAndUV };

/// By triangle: the numbers of its corners, from 0 without gaps in the order in which they come.
using CornerIds = std::vector<std::array<std::uint32_t, 3>>;

/// Numbers the corners so that those that are one have the same number.
/// \pre all coordinates are finite
[[nodiscard]] CornerIds buildCornerIds(const std::vector<Triangle>& triangles, CornerIdentity identity);

/// Whether two corners of a triangle are one.
[[nodiscard]] inline bool hasRepeatedCorner(const std::array<std::uint32_t, 3>& corners) {
    return corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0];
}

}  // namespace quarn
