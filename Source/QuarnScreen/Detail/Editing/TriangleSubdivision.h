/// \file
/// Subdivision of triangles.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Subdivides a triangle until no edge is longer than \p maxEdgeLength, and appends the pieces. A
/// triangle without long edges is appended itself.
///
/// \note Intended: pieces have corners and centroids only; their normal, edges and UV edges are
///       zero. A reader would expect computed fields.
/// \warning Does not terminate if halving does not bring an edge below the bound, as with a bound
///          of zero.
void splitTriangle(const Triangle& triangle, double maxEdgeLength, std::vector<Triangle>& pieces);

/// Returns the number of pieces that splitTriangle() would append, at most \p maxCount.
[[nodiscard]] std::uint64_t countPieces(const Triangle& triangle, double maxEdgeLength,
                                        std::uint64_t maxCount);

}  // namespace quarn::detail
