/// \file
/// Findings about the boundary and the holes of a mesh.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends findings of holes, and of a UV map with more islands than the surface has components.
/// \param unit unit of lengths
void checkBoundary(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                   std::vector<Finding>& findings);

}  // namespace quarn
