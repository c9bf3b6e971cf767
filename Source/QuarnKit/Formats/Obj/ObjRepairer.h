/// \file
/// OBJ texts from whatever program in a form that the library loads.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ObjRepairs.h"

namespace quarn {

struct RepairedObj {
    std::string text;
    ObjRepairs repairs;
    /// The line of the given text that holds the face, for each triangle that the library makes of the text.
    std::vector<std::uint64_t> triangleLines;
};

/// Writes \p text in the form that the library loads: relative references become absolute, faces without normals get
/// that of their corners, and so on; see ObjRepair. Vertices, UVs and faces stay, in their order and with the
/// digits that they have. A text that the library reads as the same mesh comes back whole, and so do
/// lines that need no change.
///
/// Stops with a Error, which names the line, where the text is no OBJ text: a coordinate that is no number, a corner of a face that
/// refers to no vertex, no vertex or no face at all, and UTF-16.
/// \param name what error lines call the text
[[nodiscard]] RepairedObj repairObj(const std::string& name, const std::string& text);

}  // namespace quarn
