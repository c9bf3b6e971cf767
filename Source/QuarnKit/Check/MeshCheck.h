/// \file
/// All checks of a mesh.
#pragma once

#include <string>
#include <vector>

#include "Finding.h"

namespace quarn {

/// Finds the defects of a mesh that would make a calibration fail.
///
/// Time and memory are about linear in the number of triangles. The memory is below that of the
/// screen that would be built from the mesh. Safe on several threads.
/// \param unit unit of lengths
/// \return findings in a fixed order; values that are not finite end the check
[[nodiscard]] std::vector<Finding> checkMesh(const CheckedMesh& mesh, const std::string& unit);

}  // namespace quarn
