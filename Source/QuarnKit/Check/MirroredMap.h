/// \file
/// The finding about a UV map that is mirrored as a whole.
#pragma once

#include <vector>

#include "Finding.h"

namespace quarn {

/// Appends a finding of a map that is mirrored as a whole: with u to the left where v is downwards, as the viewer sees it.
///
/// The viewer is the eye point, (0, 0, 0), as for a dome, or stands far away at -Y, as for a wall. The map counts as
/// mirrored where it is for one of the two and the other one does not see it the right way round.
/// \param isOriented by triangle, whether it has area in space and in UV
void checkMirroredMap(const CheckedMesh& mesh, const std::vector<bool>& isOriented,
                      std::vector<Finding>& findings);

}  // namespace quarn
