/// \file
/// Findings about triangles taken one by one.
#pragma once

#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends a finding for values that are not finite, and tells whether there is none.
bool checkFinite(const CheckedMesh& mesh, std::vector<Finding>& findings);

/// Appends findings of triangles without area, and of those whose three positions an earlier triangle has, in any turn or
/// order.
void checkTriangles(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings);

/// Appends a note where no face refers to a vertex.
void checkUnusedVertices(const CheckedMesh& mesh, std::vector<Finding>& findings);

}  // namespace quarn
