/// \file
/// The grid of vertices that curved screens hand out for display.
#pragma once

#include <vector>

namespace quarn::detail {

/// Vertices in each direction.
inline constexpr int kDisplayGridSize = 100;
inline constexpr double kDisplayGridIntervals = kDisplayGridSize - 1;

/// Appends the indices of two triangles for each cell of the grid, whose vertex (r, c) has the index r *
/// kDisplayGridSize + c. They count from 0, whatever \p indices holds already.
void appendDisplayGridIndices(std::vector<int>& indices);

/// Factor from a screen's size to the y of its view position: the viewer stands farther from a larger screen.
[[nodiscard]] constexpr double viewDistanceFactor(double size) {
    if (size < 1.0) return -1.0;
    if (size < 5.0) return -5.0;
    return -10.0;
}

}  // namespace quarn::detail
