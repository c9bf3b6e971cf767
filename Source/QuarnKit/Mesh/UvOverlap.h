/// \file
/// Triangles that overlap in UV.
#pragma once

#include <cstdint>
#include <vector>

#include "TriangleCorners.h"

namespace quarn {

/// Minimum depth in UV by which triangles overlap: a millionth of the picture, far below a pixel,
/// and above the rounding of corners.
inline constexpr double kMinUvOverlap = 1e-6;

/// Returns true if the interiors of two triangles overlap by more than kMinUvOverlap in every
/// direction.
[[nodiscard]] bool doOverlap(const TriangleUVs& a, const TriangleUVs& b);

/// Result of findUvOverlaps().
struct UvOverlaps {
    std::vector<std::uint32_t> triangles;  ///< Their indices, ascending.
    bool isComplete = true;                ///< False if there may be more.
};

/// Finds the triangles that overlap with another one. The time is about linear in the number of
/// triangles. If very many overlap, the search stops early, and not all are found.
/// \pre all UVs are finite
[[nodiscard]] UvOverlaps findUvOverlaps(const std::vector<TriangleUVs>& triangles);

}  // namespace quarn
