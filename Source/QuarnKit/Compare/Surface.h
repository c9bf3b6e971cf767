/// \file
/// The surface of a screen as triangles.
#pragma once

#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>

#include "TriangleDistance.h"

namespace quarn {

struct Surface {
    std::vector<Corners> triangles;
    /// How far the triangles of a shape are from it: the greatest distance of the middle of an edge. 0 for a mesh.
    double chordError = 0.0;
};

/// Diagonal of the box around a screen, roughly.
[[nodiscard]] double sizeOf(const Screen& screen);

/// The triangles of a mesh, or those of a grid on a shape, made finer until it is no farther from the shape than \p accuracy or
/// has a million cells. Stops where positions are not finite.
[[nodiscard]] Surface surfaceOf(const Screen& screen, double accuracy);

}  // namespace quarn
