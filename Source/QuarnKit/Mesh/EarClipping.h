/// \file
/// Triangulates polygons that are not convex.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Returns true if a triangle of the fan around the first corner of a polygon has the opposite
/// winding of the polygon: the fan then overlaps itself. Degenerate triangles do not count.
[[nodiscard]] bool isFanFolded(std::span<const Point<double, 3>> corners);

/// Indices of the three corners of a polygon that form a triangle.
using PolygonTriangle = std::array<std::uint32_t, 3>;

/// Maximum number of corners of a polygon that is triangulated, since the time is quadratic.
inline constexpr std::size_t kMaxClippedCorners = 1000;

/// Triangulates a polygon in the plane of its mean normal: cuts off its ears, the best-shaped one
/// first. An ear is a triangle of three consecutive corners without another corner inside.
///
/// Edges may touch, as in a polygon that encloses a hole and is joined to it by a bridge.
/// \return two triangles less than corners, all with the winding of the polygon, except degenerate
/// ones; nothing if there is no such triangulation because edges cross, and for more than
/// kMaxClippedCorners
[[nodiscard]] std::vector<PolygonTriangle> clipEars(std::span<const Point<double, 3>> corners);

}  // namespace quarn
