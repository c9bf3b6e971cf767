/// \file
/// Prescans the OBJ text of any program for its vertices, UVs and normals.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ObjLogicalLines.h"

namespace quarn {

/// The data to which the faces of a text refer.
struct ObjPrescan {
    std::vector<std::array<float, 3>> positions;  ///< As the library reads them.
    std::vector<bool> areUVsReadable;             ///< One for each UV.
    std::uint64_t normalCount = 0;
    std::uint64_t firstFaceLine = 0;   ///< 0 if there is no face.
    std::uint64_t lastNormalLine = 0;  ///< 0 if there is no normal.
};

/// Prescans a text. Throws an Error if it has no vertex, no face, or a coordinate that is no
/// number.
/// \param name name of the text in error messages
[[nodiscard]] ObjPrescan prescanObj(const std::string& name, std::string_view text);

/// Kind of a line.
enum class ObjLineKind {
    Vertex,
    UV,
    Normal,
    Face,
    Misread,  ///< The library would read it as one of the others.
    Other
};
[[nodiscard]] ObjLineKind kindOf(const ObjLogicalLine& logicalLine);

}  // namespace quarn
