/// \file
/// The properties that only meshes have. For the command info.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>

#include "Base/Json.h"

namespace quarn::tool {

/// Returns the member "mesh" of the JSON document.
/// \pre screen.mesh has a value
[[nodiscard]] Json jsonMesh(const Screen& screen);

/// Returns labels with their values, for people.
/// \pre screen.mesh has a value
[[nodiscard]] std::vector<std::pair<std::string, std::string>> meshLines(const Screen& screen,
                                                                         const std::string& unit);

}  // namespace quarn::tool
