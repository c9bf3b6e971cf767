/// \file
/// Triangles whose UVs are missing, degenerate, overlapping or mirrored.
#pragma once

#include <cstdint>
#include <vector>

#include "MeshTopology.h"
#include "UvOverlap.h"

namespace quarn {

/// State of the UVs of one triangle: a corner has none, the area in UV is zero, or neither.
enum class UvState { Missing, Degenerate, Good };

/// Returns the state of each triangle.
[[nodiscard]] std::vector<UvState> uvStatesOf(const std::vector<Triangle>& triangles);

/// Finds the triangles that overlap with another one in UV. Duplicates do not count.
[[nodiscard]] UvOverlaps uvOverlapsOf(const std::vector<Triangle>& triangles,
                                      const std::vector<UvState>& states, const MeshTopology& topology);

/// Returns, by triangle, true if its UVs have an orientation: if it has area in space and in UV.
[[nodiscard]] std::vector<bool> findOriented(const std::vector<UvState>& states,
                                             const MeshTopology& topology);

/// Returns, by triangle, true if its UVs have the opposite orientation of most of its patch, both
/// seen from the front of the patch.
/// \param isOriented result of findOriented()
[[nodiscard]] std::vector<bool> findMirrored(const std::vector<Triangle>& triangles,
                                             const std::vector<bool>& isOriented,
                                             const MeshTopology& topology);

}  // namespace quarn
