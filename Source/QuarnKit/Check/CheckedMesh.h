/// \file
/// A mesh that is looked through for what would make a calibration fail.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnScreen/Detail/Obj/ObjData.h>
#include <QuarnScreen/Triangle.h>

namespace quarn {

/// A mesh as it was read. Nothing of it is owned.
struct CheckedMesh {
    const detail::ObjData& objData;           ///< Records of its file; empty where it has none of that kind.
    const std::vector<Triangle>& triangles;   ///< In the screen's frame, kNoUV where a corner has no UV.
    const std::vector<std::uint64_t>& lines;  ///< Line of each triangle's face; empty where there are none.
    bool canHaveUV = true;                    ///< False for a mesh of a format without UVs.
};

}  // namespace quarn
