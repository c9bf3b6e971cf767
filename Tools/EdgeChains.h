/// \file
/// Edges joined to walks.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace quarn {

/// A walk along edges.
struct EdgeChain {
    std::vector<std::uint32_t> points;  ///< One more than edges; where the walk closes, the first one again.
    std::vector<std::uint32_t> edges;   ///< Indices of the edges in walking order.
};

/// Walks along edges, each once and in whatever direction. Walks that do not close come first.
/// \param edges pairs of numbers of points
[[nodiscard]] std::vector<EdgeChain> joinEdges(
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& edges);

}  // namespace quarn
