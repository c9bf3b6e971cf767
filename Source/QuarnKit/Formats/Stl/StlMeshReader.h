/// \file
/// Meshes from STL files of any form.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <QuarnKit/Base/Observer.h>
#include <QuarnKit/Formats/Obj/MeshDocument.h>

#include "StlTextReader.h"

namespace quarn {

/// What is odd about an STL file that holds fewer or more triangles than it seems to.
struct StlWarning {
    std::string name;  ///< A stable word, as of a finding.
    std::uint64_t line = 0;
    std::string text;
};

/// Calls \p visit with the corners of each triangle of an STL file, binary or text. All that are there count, whatever the
/// header says. Stops with a Error at what is no STL.
/// \param name what error lines call the text
[[nodiscard]] std::optional<StlWarning> forEachStlTriangle(
    const std::string& name, std::string_view text, const std::function<void(const StlCorners&)>& visit);

/// Tells that an STL file has no triangle.
[[noreturn]] void refuseStlWithoutTriangle(const std::string& name);

/// The mesh of an STL file. Equal positions become one vertex; normals are left to the winding. A remark becomes a note
/// on standard error. Stops at numbers that are not finite, and where there is no triangle, too.
[[nodiscard]] MeshDocument readStlMesh(const std::string& name, std::string_view text, Observer& observer);

/// The OBJ text of that mesh.
[[nodiscard]] std::string objTextOfStl(const std::string& name, std::string_view text, Observer& observer);

}  // namespace quarn
