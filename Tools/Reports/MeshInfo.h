/// \file
/// What the command info tells of meshes alone.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <utility>
#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>

namespace quarn::tool {

/// The member "mesh" of the JSON document.
/// \pre screen.mesh is there, here and below
[[nodiscard]] nlohmann::ordered_json jsonMesh(const Screen& screen);

/// Labels with their values, for people.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> meshLines(const Screen& screen,
                                                                         const std::string& unit);

}  // namespace quarn::tool
