/// \file
/// The legend of a plot.
#pragma once

#include <string>

#include "PlotPanel.h"

namespace quarn {

/// Says what the strokes and colours of a plot mean, and where the eye point is.
void drawLegend(SvgWriter& svg, const Box& box, const IScreenGeometry& geometry, const PlotScene& scene,
                const std::string& unit);

}  // namespace quarn
