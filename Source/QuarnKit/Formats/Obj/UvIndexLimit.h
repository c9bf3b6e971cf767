/// \file
/// Meshes whose index by UV grows without measure.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnScreen/Detail/Limits/RegionMapEstimate.h>

#include "ObjValidation.h"

namespace quarn {

/// How large the index would become: nothing but whole where it is surely small, else as it was counted.
[[nodiscard]] detail::RegionMapEstimate estimateUvIndex(const std::vector<RegionRect>& boxes);

/// Stops with a Error where the index of the mesh of a text would take unreasonably long, or more memory than is left
/// beside the mesh.
/// \param file the file that holds the text
void refuseLargeUvIndex(const std::string& file, const ObjText& text, const ObjCounts& counts,
                        std::uint64_t maxMemory);

}  // namespace quarn
