/// \file
/// The vertices, UVs and normals of an OBJ text from whatever program.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ObjLogicalLines.h"

namespace quarn {

/// What the faces of a text refer to.
struct ObjPrescan {
    std::vector<std::array<float, 3>> positions;  ///< As the library reads them.
    std::vector<bool> areUVsReadable;             ///< One for each UV.
    std::uint64_t normalCount = 0;
    std::uint64_t firstFaceLine = 0;   ///< 0 where there is no face.
    std::uint64_t lastNormalLine = 0;  ///< 0 where there is no normal.
};

/// Stops with a Error where the text holds no vertex or no face, or a coordinate that is no number.
/// \param name what error lines call the text
[[nodiscard]] ObjPrescan prescanObj(const std::string& name, std::string_view text);

/// What a line of a text holds.
enum class ObjLineKind {
    Vertex,
    UV,
    Normal,
    Face,
    Misread,  ///< The library would take it for one of the others.
    Other
};
[[nodiscard]] ObjLineKind kindOf(const ObjLogicalLine& logicalLine);

/// How a number is written.
enum class ObjNumberForm { Plain, WithPlusSign, NoNumber };
[[nodiscard]] ObjNumberForm numberFormOf(std::string_view word);

}  // namespace quarn
