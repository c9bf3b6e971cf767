/// \file
/// Findings about the size and the position of a mesh.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Mesh/MeshTopology.h>

#include "Finding.h"

namespace quarn {

/// Appends a finding if the diagonal of the bounds is not plausible, see isPlausibleSize().
/// \param unit unit of lengths; an unknown one counts as meters
void checkSize(const CheckedMesh& mesh, const std::string& unit, std::vector<Finding>& findings);

/// Appends a finding if the mesh, or one of its connected components, is so far from the origin
/// that single precision rounds its positions, see CoordinateRounding. Space between components
/// does not count as size.
/// \param unit unit of lengths
void checkRounding(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                   std::vector<Finding>& findings);

}  // namespace quarn
