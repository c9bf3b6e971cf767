/// \file
/// Findings about which way round the UVs of a mesh go.
#pragma once

#include <vector>

#include "Check/CheckSurface.h"
#include "Check/Finding.h"

namespace quarn {

/// Appends findings of triangles whose UVs go the other way round than those of most of their sheet, and of a map that is
/// mirrored as a whole: with u to the left where v is downwards, as the viewer sees it.
///
/// The viewer is the eye point, (0, 0, 0), as for a dome, or stands far away at -Y, as for a wall. The map counts as
/// mirrored where it is for one of the two and the other one does not see it the right way round.
/// \param isOriented by triangle, whether it has area in space and in UV
void checkMirrored(const CheckedMesh& mesh, const Surface& surface, const std::vector<bool>& isOriented,
                   std::vector<Finding>& findings);

}  // namespace quarn
