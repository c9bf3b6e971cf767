/// \file
/// The size of a refined mesh, counted before it is built.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn {

/// Returns how many triangles MeshScreen::refine() makes of a mesh, counted up to \p limit; nothing
/// if the refinement does not terminate, because \p maxEdge is below the resolution of the
/// coordinates.
/// \param maxEdge maximum length of an edge, above 0, in the unit of the mesh
[[nodiscard]] std::optional<std::uint64_t> countRefinement(const std::vector<Triangle>& triangles,
                                                           double maxEdge, std::uint64_t limit);

}  // namespace quarn
