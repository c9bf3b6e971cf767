/// \file
/// Search for the boundary edges of a mesh.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Finds the boundary edges of a mesh: the edges that an odd number of its triangles share. Two
/// edges are the same if their ends are equal exactly in position and UV, in either direction.
///
/// The number of an edge is 3 * triangle + corner: the index of the triangle in the list, and the
/// corner from which the edge leads to the next one. A found edge has its number in the last
/// triangle that shares it.
///
/// Linear in time. The memory is linear in the largest number of edges that are unmatched at once:
/// nearly none in mesh order, up to 24 bytes per triangle in random order.
///
/// \return the numbers in ascending order; nothing if the search needs another method: if a
///         coordinate is NaN, which is equal to nothing, if there are more than 2^32 / 6 triangles,
///         or if the edges were chosen to collide in the hash table
[[nodiscard]] std::optional<std::vector<std::uint32_t>> findBoundaryEdges(
    const std::vector<Triangle>& triangles);

}  // namespace quarn::detail
