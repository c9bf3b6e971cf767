/// \file
/// Findings about the UVs of a mesh.
#pragma once

#include <vector>

#include "Check/CheckSurface.h"
#include "Check/Finding.h"

namespace quarn {

/// Appends findings of UVs that are missing, outside of 0 to 1, without area, mirrored or overlapping.
/// \param isDegenerate, isDuplicate by triangle; of these what follows from it is not told again
void checkUv(const CheckedMesh& mesh, const Surface& surface, const std::vector<bool>& isDegenerate,
             const std::vector<bool>& isDuplicate, std::vector<Finding>& findings);

}  // namespace quarn
