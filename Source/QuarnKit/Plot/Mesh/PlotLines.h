/// \file
/// Visible and hidden parts of lines on a mesh.
#pragma once

#include <cstddef>
#include <vector>

#include <QuarnKit/Plot/Views/PlotViews.h>

#include "PlotRaster.h"

namespace quarn {

/// A part of a line that is visible or hidden as a whole.
struct LinePart {
    std::vector<ViewPoint> points;
    bool isHidden = false;
};

/// Number of positions of lines that a view may still test.
struct SampleBudget {
    std::size_t left = 2'000'000;
};

/// Splits a line into visible and hidden parts, in order. Omits points without effect on the page.
/// \param budget is reduced; the line ends where nothing is left
[[nodiscard]] std::vector<LinePart> visibleParts(const std::vector<Point<double, 3>>& line,
                                                 const Camera& camera, const PlotRaster& raster,
                                                 SampleBudget& budget);

/// Simplifies a line: omits points whose distance from the simplified line is at most \p tolerance.
[[nodiscard]] std::vector<ViewPoint> simplifyLine(const std::vector<ViewPoint>& line, double tolerance);

}  // namespace quarn
