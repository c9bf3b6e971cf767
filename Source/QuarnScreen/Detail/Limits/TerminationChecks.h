/// \file
/// Termination checks for the loops of the mesh engine.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Returns true if MeshScreen::findBoundaryNew(), and so every mesh build, is guaranteed to
/// terminate: no corner is NaN. Then every boundary corner has an even number of boundary edges, so
/// that each walk returns to its start. O(n).
[[nodiscard]] bool boundarySearchTerminates(const std::vector<Triangle>& triangles);

/// Returns true if MeshScreen::refine() is guaranteed to terminate, including its build. No corner
/// may be or become NaN. The bound must be positive. Longer edges must have finite squares, and
/// halving must bring them below the bound before rounding stops it. The number of pieces is not
/// checked. O(n).
[[nodiscard]] bool refinementTerminates(const std::vector<Triangle>& triangles, double maxEdgeLength);

/// Returns the number of triangles that MeshScreen::refine() would create, at most \p maxCount,
/// without storing them.
/// \pre refinementTerminates() is true for the triangles that are counted
[[nodiscard]] std::uint64_t countRefinedTriangles(const std::vector<Triangle>& triangles,
                                                  double maxEdgeLength, std::uint64_t maxCount);

}  // namespace quarn::detail
