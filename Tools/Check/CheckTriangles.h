/// \file
/// Findings about triangles taken one by one.
#pragma once

#include <vector>

#include "Check/Corners.h"
#include "Check/Finding.h"

namespace quarn {

/// Appends a finding for values that are not finite, and tells whether there is none.
bool checkFinite(const CheckedMesh& mesh, std::vector<Finding>& findings);

/// Appends findings of triangles without area.
/// \return by triangle, whether it is one
std::vector<bool> checkDegenerate(const CheckedMesh& mesh, const CornerNumbers& corners,
                                  std::vector<Finding>& findings);

/// Appends findings of triangles whose three positions an earlier triangle has, in any turn or order.
/// \return by triangle, whether it is one
std::vector<bool> checkDuplicates(const CheckedMesh& mesh, const CornerNumbers& corners,
                                  std::vector<Finding>& findings);

/// Appends a note where no face refers to a vertex.
void checkUnusedVertices(const CheckedMesh& mesh, std::vector<Finding>& findings);

}  // namespace quarn
