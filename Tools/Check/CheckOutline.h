/// \file
/// Findings about the outline of a mesh and the holes in it.
#pragma once

#include <string>
#include <vector>

#include "Check/CheckSurface.h"
#include "Check/Finding.h"

namespace quarn {

/// Appends findings of holes, and of a UV map that is in more parts than the surface. As for the screen's own outline,
/// corners are one where position and UV agree.
/// \param unit of lengths
void checkOutline(const CheckedMesh& mesh, const Surface& surface, const std::vector<bool>& isDuplicate,
                  const std::string& unit, std::vector<Finding>& findings);

}  // namespace quarn
