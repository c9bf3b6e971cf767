/// \file
/// The edges of a mesh that an odd number of its triangles have.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Finds the edges with an odd number of triangles. Two edges are the same if their ends agree exactly in
/// position and UV, in either direction.
///
/// An edge has the number 3 * triangle + corner, the index of the triangle in the list and of the corner
/// from which the edge runs to the next one. Each edge found stands for the last triangle that has it.
///
/// The cost is linear in the number of triangles, and the memory in the largest number of edges that are
/// open at once: in mesh order hardly any, in random order up to 24 bytes a triangle.
///
/// \return the numbers in ascending order; nothing if the answer has to be found in another way: if some
///         coordinate is NaN, which agrees with nothing, if there are more than 2^32 / 6 triangles, or if the
///         edges were chosen to collide in the hash.
[[nodiscard]] std::optional<std::vector<std::uint32_t>> findBoundaryEdges(
    const std::vector<Triangle>& triangles);

}  // namespace quarn::detail
