/// \file
/// The objects and groups of an OBJ file as text and as JSON. For the command info.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Formats/Obj/Parts/ObjParts.h>

#include "Base/Json.h"

namespace quarn::tool {

/// Returns a line for each object or group after a line of titles. The name is last, because it may
/// contain blanks.
[[nodiscard]] std::string partsText(const std::vector<ObjPart>& parts);

/// Returns the list as a JSON document.
[[nodiscard]] Json jsonParts(const std::string& file, const std::vector<ObjPart>& parts);

}  // namespace quarn::tool
