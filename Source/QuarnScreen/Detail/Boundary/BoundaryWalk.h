/// \file
/// Search for the boundary of a mesh.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QuarnScreen/Boundary.h>

namespace quarn::detail {

/// The result of a boundary search.
struct BoundaryWalkResult {
    /// True if there is a single closed boundary, and no point of it has kNoUV.
    bool isSingleWithUV = false;
    /// Number of boundary edges outside of the found boundary; absent if it uses all of them.
    std::optional<std::size_t> edgesLeft;
};

/// Finds the boundary of a mesh by a walk along its boundary edges: the edges that an odd number of
/// triangles share.
///
/// The walk starts at the smallest boundary point in the order of x, y, z, u, v. It follows edges
/// from their lower to their upper end until none continues, then from upper to lower, and so on.
/// Of several edges, it takes the one whose last triangle is first in the list. The walk ends if
/// its direction must change at the position where it started, regardless of UV. It leaves the
/// edges that it did not use.
///
/// \note Intended: the walk has no other end. Every corner has an even number of boundary edges, so
///       that each walk returns to its start. NaN is equal to nothing, so that a walk that reaches
///       a NaN may not terminate.
///
/// \param triangles the mesh; derived fields are not read
/// \param[out] boundary cleared with its capacity kept, then filled with the first boundary; empty
///        for a closed surface. Contains pointers into \p triangles
[[nodiscard]] BoundaryWalkResult findBoundary(const std::vector<Triangle>& triangles, Boundary& boundary);

}  // namespace quarn::detail
