/// \file
/// Answers to rows of UVs or positions that are mapped.
#pragma once

#include <QuarnScreen/IScreenGeometry.h>

#include "Rows/RowPipeline.h"

namespace quarn::tool {

enum class MapTarget { Position, UV };

/// What becomes of a row whose result is beyond the screen.
enum class BeyondScreen {
    Reject,       ///< It has no result.
    Extrapolate,  ///< Its result is on the continuation of the screen.
};

/// The answer to a row u,v, or x,y,z for the target UV: the row itself, a word that says how the answer was got, and
/// the answer, or nothing where the word is "outside".
/// \param screen it has to outlive the result
[[nodiscard]] RowQuery mapRows(const IScreenGeometry& screen, MapTarget target, BeyondScreen beyond);

}  // namespace quarn::tool
