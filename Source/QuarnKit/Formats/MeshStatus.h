/// \file
/// The status of a loaded mesh in words.
#pragma once

#include <string>

#include "ObjLoader.h"

namespace quarn {

struct MeshStatus {
    std::string word;  ///< For programs, such as "no_uv".
    std::string text;  ///< The defect, and the queries that work.
};

/// Returns the status of a mesh.
[[nodiscard]] MeshStatus meshStatusOf(const IScreenGeometry& screen, const MeshSource& source);
/// Returns the status of an OBJ mesh.
[[nodiscard]] MeshStatus meshStatusOf(OBJScreen::Status status, const MeshSource& source);

}  // namespace quarn
