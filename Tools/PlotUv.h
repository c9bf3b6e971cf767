/// \file
/// The UV layout of a plot.
#pragma once

#include <string>

#include "PlotPanel.h"

namespace quarn {

/// Draws the unit square with its grid, its corners and how long its edges are on the surface.
void drawUvLayout(SvgWriter& svg, const Box& box, const PlotSurface& surface, const std::string& unit);

}  // namespace quarn
