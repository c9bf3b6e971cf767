/// \file
/// Triangles cut into smaller ones.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Appends the pieces of a triangle whose edges are no longer than \p maxEdgeLength: the triangle itself where none is.
///
/// Intended: pieces have corners and centroids alone; their normal, edges and UV edges are zero, where a reader would
/// expect computed ones. \warning It does not end for edges that stay longer than the bound however often they are
/// halved, as with a bound of zero.
void splitTriangle(const Triangle& triangle, double maxEdgeLength, std::vector<Triangle>& pieces);

/// How many pieces those are, counted up to \p maxCount.
[[nodiscard]] std::uint64_t countPieces(const Triangle& triangle, double maxEdgeLength,
                                        std::uint64_t maxCount);

}  // namespace quarn::detail
