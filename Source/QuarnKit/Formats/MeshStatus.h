/// \file
/// How good a loaded mesh is, in words.
#pragma once

#include <string>

#include "ObjLoader.h"

namespace quarn {

struct MeshStatus {
    std::string word;  ///< For programs, as in "no_uv".
    std::string text;  ///< What is wrong, and what works.
};

/// \param screen a mesh
[[nodiscard]] MeshStatus meshStatusOf(const IScreenGeometry& screen, const MeshSource& source);

}  // namespace quarn
