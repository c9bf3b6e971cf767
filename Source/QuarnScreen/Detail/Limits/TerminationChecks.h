/// \file
/// Which meshes and bounds the mesh engine's own loops do not end for, or not within reason.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Whether MeshScreen::findBoundaryNew(), and so every build of a mesh, is sure to end: no corner holds a NaN. Without
/// one every corner of the outline has an even number of its edges, so that each walk gets back to its beginning.
[[nodiscard]] bool boundarySearchTerminates(const std::vector<Triangle>& triangles);

/// Whether MeshScreen::refine() is sure to end, the build behind it included: no corner holds a NaN or comes to hold one,
/// the bound is above zero, edges that are longer have finite squares, and halving gets them below the bound before
/// neighbouring numbers are reached. It says nothing about the number of pieces.
[[nodiscard]] bool refinementTerminates(const std::vector<Triangle>& triangles, double maxEdgeLength);

/// How many triangles MeshScreen::refine() makes, counted one by one up to \p maxCount and without room for them.
/// \pre refinementTerminates()
[[nodiscard]] std::uint64_t countRefinedTriangles(const std::vector<Triangle>& triangles,
                                                  double maxEdgeLength, std::uint64_t maxCount);

}  // namespace quarn::detail
