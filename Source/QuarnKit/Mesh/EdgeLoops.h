/// \file
/// Edges joined to paths and loops.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace quarn {

/// A path along edges that visits no point twice, except that a closed one ends where it starts.
struct EdgeLoop {
    std::vector<std::uint32_t> points;  ///< In order; a closed path repeats its first point.
    std::vector<std::uint32_t> edges;   ///< Indices of the edges in the order of the path.
};

/// Joins edges to paths. Each edge occurs once, in either direction. If every point has an even
/// number of edges, all paths are closed.
/// \param edges pairs of point numbers; the memory grows with the largest number
[[nodiscard]] std::vector<EdgeLoop> buildEdgeLoops(
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& edges);

}  // namespace quarn
