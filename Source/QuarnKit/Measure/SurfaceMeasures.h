/// \file
/// Extent, area and edge lengths of screens.
#pragma once

#include <optional>
#include <vector>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// Lengths along the surface of the four edges of an analytic screen, in the screen's unit. The
/// edge of a pole has length 0.
struct EdgeLengths {
    double top = 0.0;     ///< v = 0.
    double right = 0.0;   ///< u = 1.
    double bottom = 0.0;  ///< v = 1.
    double left = 0.0;    ///< u = 0.
};

/// Sizes of a screen's surface, in the screen's unit. A number that overflows is not finite.
struct SurfaceMeasures {
    /// The smallest axis-aligned box around the surface, unlike IScreenGeometry::getBounds(), which
    /// returns the box of the whole sphere for a section of it. Empty for a mesh without triangles.
    Bounds<3> extent;
    /// A part that a section covers twice counts twice.
    double area = 0.0;
    /// Set for analytic screens.
    std::optional<EdgeLengths> edges = {};
    /// Set for meshes: the length of the boundary that IScreenGeometry::sampleBoundary() returns, 0
    /// if there is none.
    std::optional<double> boundaryLength = {};
};

/// Returns the sizes of a screen, from closed forms for the extent and the edges of each analytic
/// screen and for all areas except ruledAreaOf().
[[nodiscard]] SurfaceMeasures surfaceMeasuresOf(const IScreenGeometry& screen);

}  // namespace quarn
