/// \file
/// Results of rows of UVs or positions that are mapped. For the command map.
#pragma once

#include <QuarnKit/Batch/SingleQueries.h>
#include <QuarnScreen/IScreenGeometry.h>

#include "Rows/RowPipeline.h"

namespace quarn::tool {

enum class MapTarget { Position, UV };

/// Returns the query for rows u,v, or x,y,z for the target UV. A result row consists of the input
/// row, a status, and the mapped point, which is empty if the status is "outside" or kEmptyRow.
/// \param screen it has to outlive the query
[[nodiscard]] RowQuery mapRows(const IScreenGeometry& screen, MapTarget target, BeyondScreen beyond);

}  // namespace quarn::tool
