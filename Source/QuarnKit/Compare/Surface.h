/// \file
/// The surface of a screen as triangles.
#pragma once

#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>

#include "TriangleDistance.h"

namespace quarn {

/// The triangles of a screen.
struct Surface {
    std::vector<TriangleCorners> triangles;
    /// Maximum distance between the midpoint of an edge and the analytic screen; 0 for a mesh.
    double chordError = 0.0;
};

/// Returns about the diagonal of a screen's bounding box.
[[nodiscard]] double sizeOf(const Screen& screen);

/// Returns the triangles of a mesh, or those of a grid on an analytic screen. The grid is
/// subdivided until its chord error is at most \p accuracy, or until it has a million cells.
/// \throws Error if the screen has no triangles, or positions that are not finite
[[nodiscard]] Surface surfaceOf(const Screen& screen, double accuracy);

/// True if the triangles of a screen are an approximation.
[[nodiscard]] bool isAnalytic(const Screen& screen);

}  // namespace quarn
