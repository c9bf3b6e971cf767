/// \file
/// Whether two OBJ texts are one mesh to the library.
#pragma once

#include <string>

namespace quarn {

/// Whether the library loads both texts, and its triangles have the same positions and UVs in the same order.
[[nodiscard]] bool areSameMesh(const std::string& first, const std::string& second);

}  // namespace quarn
