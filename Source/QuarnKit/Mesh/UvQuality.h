/// \file
/// Triangles whose UVs are of no use, or not of one with those around them.
#pragma once

#include <cstdint>
#include <vector>

#include "MeshTopology.h"
#include "UvOverlap.h"

namespace quarn {

/// Triangles by what their UVs are good for.
enum class UvState { Missing, Degenerate, Good };

[[nodiscard]] std::vector<UvState> uvStatesOf(const std::vector<Triangle>& triangles);

/// The triangles that overlap with another one in UV. Duplicates do not count.
[[nodiscard]] UvOverlaps uvOverlapsOf(const std::vector<Triangle>& triangles,
                                      const std::vector<UvState>& states, const MeshTopology& topology);

/// By triangle: whether its UVs have a way round that means something, as it has area in space and in UV.
[[nodiscard]] std::vector<bool> findOriented(const std::vector<UvState>& states,
                                             const MeshTopology& topology);

/// By triangle: whether its UVs go the other way round than those of most of its sheet, both seen from the side of the
/// sheet.
[[nodiscard]] std::vector<bool> findMirrored(const std::vector<Triangle>& triangles,
                                             const std::vector<bool>& isOriented,
                                             const MeshTopology& topology);

}  // namespace quarn
