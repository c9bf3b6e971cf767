/// \file
/// Findings about the UVs of a mesh.
#pragma once

#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends findings of UVs that are missing, outside of 0 to 1, with zero area, mirrored or
/// overlapping. Consequences of degenerate and duplicate triangles are not reported again.
void checkUv(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings);

}  // namespace quarn
