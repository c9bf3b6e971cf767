/// \file
/// Findings about how triangles hang together in space.
#pragma once

#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends findings of flipped triangles, surfaces with one side only, edges of more than two triangles, and pieces.
void checkSurface(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings);

}  // namespace quarn
