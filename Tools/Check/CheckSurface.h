/// \file
/// Findings about how triangles hang together in space.
#pragma once

#include <vector>

#include "Check/Corners.h"
#include "Check/Finding.h"

namespace quarn {

/// The surface that triangles make.
struct Surface {
    std::vector<bool> isUsed;  ///< By triangle: neither a duplicate nor one with a repeated corner.
    std::vector<std::uint32_t>
        sheets;  ///< By triangle: parts whose triangles are joined by edges of just two.
    std::vector<bool> isFlipped = {};  ///< By triangle: against the winding of most of its sheet.
    std::uint64_t pieces = 0;          ///< Parts that hang together over edges.
};

/// Appends findings of flipped triangles, surfaces with one side only, edges of more than two triangles, and pieces.
/// \param corners by position
[[nodiscard]] Surface checkSurface(const CheckedMesh& mesh, const CornerNumbers& corners,
                                   const std::vector<bool>& isDuplicate, std::vector<Finding>& findings);

}  // namespace quarn
