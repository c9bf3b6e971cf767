/// \file
/// Triangles that lie on each other in UV.
#pragma once

#include <cstdint>
#include <vector>

#include "TriangleCorners.h"

namespace quarn {

/// How far triangles must reach into each other to overlap, in UV: a millionth of the picture, far below a pixel, and
/// above what rounding moves the corners.
inline constexpr double kMinUvOverlap = 1e-6;

/// Whether the insides of two triangles overlap by kMinUvOverlap in every direction.
[[nodiscard]] bool doOverlap(const TriangleUVs& a, const TriangleUVs& b);

/// Triangles that overlap with another one.
struct UvOverlaps {
    std::vector<std::uint32_t> triangles;  ///< Their indices, ascending.
    bool isComplete = true;                ///< False where there may be more.
};

/// Finds the triangles that overlap with another one. The time is about linear in the number of triangles, and bounded
/// where very many overlap: then not all are found.
[[nodiscard]] UvOverlaps findUvOverlaps(const std::vector<TriangleUVs>& triangles);

}  // namespace quarn
