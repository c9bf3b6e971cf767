/// \file
/// Findings about the connectivity of a mesh in space.
#pragma once

#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends findings of flipped triangles, non-orientable surfaces, non-manifold edges, and of
/// several connected components.
void checkSurface(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings);

}  // namespace quarn
