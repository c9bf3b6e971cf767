/// \file
/// Repairs OBJ texts of any program, so that the library loads them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Formats/Obj/ObjLineMap.h>
#include <QuarnScreen/Detail/Obj/ObjData.h>

#include "ObjRepairs.h"

namespace quarn {

struct RepairedObj {
    std::string text;
    ObjRepairs repairs;
    /// For each triangle that the library builds of the text, the line of its face in the original
    /// text.
    std::vector<std::uint64_t> triangleLines;
    ObjLineMap lineMap = {};  ///< The lines of the original text.
    /// Data of the text, if the repair had to parse it.
    std::optional<detail::ObjData> objData = {};
};

/// Returns \p text in the form that the library loads: relative references become absolute, faces
/// without normals get that of their corners, and so on; see ObjRepair. Vertices, UVs and faces
/// stay, in their order and with their digits. A text that the library reads as the same mesh is
/// returned unchanged, and so is each line that needs no change.
///
/// Throws an Error, with the line if there is one, for a coordinate that is no number, a corner
/// that refers to no vertex, a text without vertex or face, and UTF-16.
/// \param name name of the text in error messages
[[nodiscard]] RepairedObj repairObj(const std::string& name, const std::string& text);

}  // namespace quarn
