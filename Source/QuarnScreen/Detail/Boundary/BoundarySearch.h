/// \file
/// The search for the outline of a mesh.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QuarnScreen/Boundary.h>

namespace quarn::detail {

/// What a search for an outline found.
struct BoundarySearchResult {
    /// Whether there is one outline, closed, and none of its points has kNoUV.
    bool isSingleWithUV = false;
    /// Edges outside of the outline that was found; absent where the outline uses all.
    std::optional<std::size_t> edgesLeft;
};

/// Walks along the outline of a mesh: the edges that an odd number of triangles have.
///
/// The walk starts at the least point of the outline, in the order of x, y, z, u, v, and follows edges
/// from their lower to their upper end as long as there is one, then the other way, and so on. Where several
/// edges lead on, it takes the one whose last triangle stands first in the list. It ends when it has to turn
/// round at the position, whatever its UV, where it started. Edges that it did not use are left.
///
/// Intended: there is no other end. Every corner has an even number of odd edges, so that each walk gets
/// back to its start; but coordinates that are NaN agree with nothing, and a walk that reaches one may look
/// for the next edge without end.
///
/// \param triangles need no derived fields
/// \param[out] boundary emptied, keeping its capacity, and filled with the first outline; it stays empty for
///        a closed surface. Its pointers point into \p triangles
[[nodiscard]] BoundarySearchResult findBoundary(const std::vector<Triangle>& triangles, Boundary& boundary);

}  // namespace quarn::detail
