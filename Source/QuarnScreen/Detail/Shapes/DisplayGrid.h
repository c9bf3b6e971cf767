/// \file
/// The vertex grid of curved screens for display, and the view position.
#pragma once

#include <vector>

namespace quarn::detail {

/// Number of vertices in each direction.
inline constexpr int kDisplayGridSize = 100;
inline constexpr double kDisplayGridIntervals = kDisplayGridSize - 1;

/// Appends the indices of two triangles for each cell of the grid. Vertex (r, c) has the index r *
/// kDisplayGridSize + c, regardless of the previous contents of \p indices.
void appendDisplayGridIndices(std::vector<int>& indices);

/// Returns the y of a screen's view position as a multiple of the screen's size. The viewer is
/// relatively farther from a larger screen.
[[nodiscard]] constexpr double viewDistanceFactor(double size) {
    if (size < 1.0) return -1.0;
    if (size < 5.0) return -5.0;
    return -10.0;
}

}  // namespace quarn::detail
