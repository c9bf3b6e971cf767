/// \file
/// Findings about single triangles.
#pragma once

#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends a finding of values that are not finite.
/// \return true if all values are finite
bool checkFinite(const CheckedMesh& mesh, std::vector<Finding>& findings);

/// Appends findings of triangles with zero area, and of duplicates: triangles with the three
/// positions of an earlier one, in any order.
void checkTriangles(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings);

/// Appends a note about vertices that no face refers to.
void checkUnusedVertices(const CheckedMesh& mesh, std::vector<Finding>& findings);

}  // namespace quarn
