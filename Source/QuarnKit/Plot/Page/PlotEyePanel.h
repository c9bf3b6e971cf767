/// \file
/// The view from the eye point on the page of a plot.
#pragma once

#include "PlotPanel.h"

namespace quarn {

/// Draws the title of the panel, and the view with its field of view if there is one.
void drawEyePanel(SvgWriter& svg, const Box& box, const PlotScene& scene);

}  // namespace quarn
