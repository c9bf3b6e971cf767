/// \file
/// Edges joined to walks.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace quarn {

/// A walk along edges that visits no point twice, but for one that closes.
struct EdgeLoop {
    std::vector<std::uint32_t> points;  ///< One more than edges; where the walk closes, the first one again.
    std::vector<std::uint32_t> edges;   ///< Indices of the edges in walking order.
};

/// Walks along edges, each once and in whatever direction. Where every point has an even number of edges, all close.
/// \param edges pairs of numbers of points; the memory is that of the greatest number
[[nodiscard]] std::vector<EdgeLoop> buildEdgeLoops(
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& edges);

}  // namespace quarn
