/// \file
/// The finding about a UV map that is mirrored as a whole.
#pragma once

#include <vector>

#include "Finding.h"

namespace quarn {

/// Appends a finding of a map that is mirrored as a whole: with u to the left if v points
/// downwards, as the viewer sees it.
///
/// The viewer is at the eye point (0, 0, 0), as for a dome, or far away at -Y, as for a wall. The
/// map counts as mirrored if one of the two sees it mirrored and the other does not see it
/// correctly.
/// \param isOriented result of findOriented()
void checkMirroredMap(const CheckedMesh& mesh, const std::vector<bool>& isOriented,
                      std::vector<Finding>& findings);

}  // namespace quarn
