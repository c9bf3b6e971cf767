/// \file
/// Lines and values of an OBJ text that have no effect on its screen.
#pragma once

#include <cstdint>

#include "ObjSourceText.h"

namespace quarn {

/// Numbers of lines and values without an effect.
struct ObjIgnoredLines {
    std::uint64_t materials = 0;          ///< Lines "usemtl".
    std::uint64_t materialLibraries = 0;  ///< Lines "mtllib".
    std::uint64_t groups = 0;             ///< Lines "g".
    std::uint64_t objects = 0;            ///< Lines "o".
    std::uint64_t smoothing = 0;          ///< Lines "s".
    std::uint64_t colors = 0;             ///< Lines "v" with three or more further values.
    std::uint64_t weights = 0;            ///< Lines "v" with one or two further values.
    std::uint64_t thirdUVs = 0;           ///< Lines "vt" with more than two values.
    std::uint64_t otherLines = 0;         ///< All other lines, except comments and blank ones.
};

/// Counts the lines and values without an effect. O(n) in the size of the text.
[[nodiscard]] ObjIgnoredLines countIgnoredLines(const ObjSourceText& text);

}  // namespace quarn
