/// \file
/// Meshes from STL files of any form.
#pragma once

#include <string>
#include <string_view>

#include "MeshDocument.h"

namespace quarn {

/// The mesh of an STL file, binary or text. Equal positions become one vertex; normals are left to the winding.
///
/// A file that holds fewer triangles than it tells of gives those that it holds, and a note on standard error. Stops with
/// a ToolError at what is no STL, at numbers that are not finite, and where there is no triangle.
/// \param name what error lines call the text
[[nodiscard]] MeshDocument meshOfAnyStl(const std::string& name, std::string_view text);

}  // namespace quarn
