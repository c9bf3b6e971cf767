/// \file
/// All checks of a mesh.
#pragma once

#include <string>
#include <vector>

#include "Finding.h"

namespace quarn {

/// Says if a mesh needs UVs. A mesh that is only measured or hit by rays does not.
enum class UvChecks { All, None };

/// Finds the defects of a mesh that would make a calibration fail.
///
/// Time and memory are about linear in the number of triangles. The memory is below that of the
/// screen that would be built from the mesh. Runs on two threads. Safe on several threads.
/// \param unit unit of lengths
/// \param uvChecks None omits the findings about UVs, except one that prevents loading
/// \return findings in a fixed order; values that are not finite end the check
[[nodiscard]] std::vector<Finding> checkMesh(const CheckedMesh& mesh, const std::string& unit,
                                             UvChecks uvChecks = UvChecks::All);

}  // namespace quarn
