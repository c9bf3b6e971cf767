/// \file
/// What the command info tells of meshes alone.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>

#include "Base/Json.h"

namespace quarn::tool {

/// The member "mesh" of the JSON document.
/// \pre screen.mesh is there, here and below
[[nodiscard]] Json jsonMesh(const Screen& screen);

/// Labels with their values, for people.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> meshLines(const Screen& screen,
                                                                         const std::string& unit);

}  // namespace quarn::tool
