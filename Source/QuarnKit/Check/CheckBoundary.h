/// \file
/// Findings about the outline of a mesh and the holes in it.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends findings of holes, and of a UV map that is in more parts than the surface.
/// \param unit of lengths
void checkBoundary(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                   std::vector<Finding>& findings);

}  // namespace quarn
