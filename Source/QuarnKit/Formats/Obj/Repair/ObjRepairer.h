/// \file
/// Repairs OBJ texts of any program, so that the library loads them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>
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
    /// First triangle, from 0, of each face that was triangulated because its fan overlaps.
    std::vector<std::uint32_t> concaveFaces = {};
    /// The same of faces that stay fans although these overlap: see selfIntersectionText().
    std::vector<std::uint32_t> selfIntersectingFaces = {};
    /// Data of the text, if the repair had to parse it.
    std::optional<detail::ObjData> objData = {};
};

/// Returns \p text in the form that the library loads: relative references become absolute, faces
/// without normals get that of their corners, and so on; see ObjRepair. Vertices, UVs and faces
/// stay, in their order and with their digits. Only a concave face whose fan overlaps becomes
/// triangles, see clipEars(). A text that the library reads as the same mesh is
/// returned unchanged, and so is each line that needs no change.
///
/// Throws an Error, with the line if there is one, for a coordinate that is no number, a corner
/// that refers to no vertex, a text without vertex or face, and UTF-16.
/// \param name name of the text in error messages
[[nodiscard]] RepairedObj repairObj(const std::string& name, const std::string& text);

/// Returns the warning about the faces of a text that are not repaired; nothing if there are none.
[[nodiscard]] std::optional<Notice> selfIntersectionNotice(const std::string& name, const RepairedObj& obj);

}  // namespace quarn
