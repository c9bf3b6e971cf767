/// \file
/// All that is looked for in a mesh.
#pragma once

#include <string>
#include <vector>

#include "Finding.h"

namespace quarn {

/// Looks for what would make a calibration fail. Time and memory are about linear in the number of
/// triangles; the memory is below that of the screen that the mesh would become.
/// \param unit of lengths
[[nodiscard]] std::vector<Finding> checkMesh(const CheckedMesh& mesh, const std::string& unit);

}  // namespace quarn
