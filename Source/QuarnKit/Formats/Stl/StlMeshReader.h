/// \file
/// Reads meshes from STL files of any form.
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

/// A mismatch of an STL file that has fewer or more triangles than it declares.
struct StlWarning {
    std::string name;  ///< A stable word, as for a finding.
    std::uint64_t line = 0;
    std::string text;
};

/// Calls \p visit with the corners of each triangle of an STL file, binary or text. All triangles
/// that are present are visited; the count of the header has no effect. Throws an Error if the text
/// is no STL.
/// \param name name of the text in error messages
[[nodiscard]] std::optional<StlWarning> forEachStlTriangle(
    const std::string& name, std::string_view text, const std::function<void(const StlCorners&)>& visit);

/// Throws the Error of an STL file without triangle.
[[noreturn]] void refuseStlWithoutTriangle(const std::string& name);

/// Returns the mesh of an STL file. Equal positions become one vertex. The winding determines the
/// normals. A warning becomes a notice. Throws an Error also for numbers that are not finite, and
/// if there is no triangle.
[[nodiscard]] MeshDocument readStlMesh(const std::string& name, std::string_view text, Observer& observer);

/// Returns the OBJ text of that mesh.
[[nodiscard]] std::string objTextOfStl(const std::string& name, std::string_view text, Observer& observer);

}  // namespace quarn
