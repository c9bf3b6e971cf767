/// \file
/// Lines on a mesh as a view shows them.
#pragma once

#include <vector>

#include <QuarnKit/Plot/Views/PlotViews.h>

#include "PlotRaster.h"

namespace quarn {

/// A part of a line of which all is seen, or nothing.
struct LinePart {
    std::vector<ViewPoint> points;
    bool isHidden = false;
};

/// The parts of a line in their order, without points that make no difference on the page.
[[nodiscard]] std::vector<LinePart> visibleParts(const std::vector<Point<double, 3>>& line,
                                                 const Camera& camera, const PlotRaster& raster);

/// The points of a line without those that lie nearer than \p tolerance to what the others draw.
[[nodiscard]] std::vector<ViewPoint> simplifyLine(const std::vector<ViewPoint>& line, double tolerance);

}  // namespace quarn
