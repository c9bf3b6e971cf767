/// \file
/// Findings about the UVs of a mesh.
#pragma once

#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends findings of UVs that are missing, outside of 0 to 1, without area, mirrored or overlapping. What follows from a
/// triangle that is degenerate or a duplicate is not told again.
void checkUv(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings);

}  // namespace quarn
