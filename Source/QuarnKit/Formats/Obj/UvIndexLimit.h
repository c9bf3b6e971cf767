/// \file
/// Meshes whose UV index would grow without bound.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnScreen/Detail/Limits/RegionMapEstimate.h>
#include <QuarnScreen/Detail/Obj/ObjData.h>

#include "ObjSourceText.h"

namespace quarn {

/// Returns the size of the index of some boxes: counted, or only `isWhole` if it is surely bounded.
[[nodiscard]] detail::RegionMapEstimate estimateUvIndex(const std::vector<RegionRect>& boxes);

/// Throws an Error if the UV index of a mesh would take unreasonably long, or more than the part of
/// \p maxMemory that the mesh leaves.
/// \param file file that contains the text
/// \param objData data of the text
void refuseLargeUvIndex(const std::string& file, const ObjSourceText& text, const detail::ObjData& objData,
                        std::uint64_t maxMemory);

}  // namespace quarn
