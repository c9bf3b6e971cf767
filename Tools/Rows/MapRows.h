/// \file
/// Answers to rows of UVs or positions that are mapped.
#pragma once

#include <QuarnScreen/IScreenGeometry.h>

#include "Rows/RowPipeline.h"

namespace quarn::tool {

enum class MapTarget { Position, UV };

/// The answer to a row u,v, or x,y,z for the target UV: the row itself, a word that says how the answer was got, and
/// the answer, or nothing where the word is "outside".
/// \param screen it has to outlive the result
/// \param extrapolates whether there are answers beyond the screen
[[nodiscard]] RowQuery mapRows(const IScreenGeometry& screen, MapTarget target, bool extrapolates);

}  // namespace quarn::tool
