#include "RefinementSize.h"

#include <QuarnScreen/Detail/Limits/TerminationChecks.h>

namespace quarn {

std::optional<std::uint64_t> countRefinement(const std::vector<Triangle>& triangles, double maxEdge,
                                             std::uint64_t limit) {
    if (!detail::refinementTerminates(triangles, maxEdge)) return std::nullopt;
    return detail::countRefinedTriangles(triangles, maxEdge, limit);
}

}  // namespace quarn
