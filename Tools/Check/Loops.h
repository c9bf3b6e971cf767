/// \file
/// Closed lines along the rim of a mesh.
#pragma once

#include <cstdint>
#include <vector>

#include "Check/Edges.h"

namespace quarn {

/// A closed line of edges that visits no corner twice. The uses are those of one triangle beside each edge.
using Loop = std::vector<EdgeUse>;

/// Parts a set of edges into loops.
/// \pre each corner has an even number of the edges
[[nodiscard]] std::vector<Loop> loopsOf(const std::vector<EdgeUse>& edges);

}  // namespace quarn
