/// \file
/// The UV layout of a plot.
#pragma once

#include <string>

#include "PlotPanel.h"

namespace quarn {

/// Draws the unit square with its grid, its corners and how long its edges are on the surface.
/// \param stretch paints the square by the surface's stretch, where there is one
void drawUvLayout(SvgWriter& svg, const Box& box, const PlotSurface& surface, const std::string& unit,
                  const StretchScale* stretch = nullptr);

/// Draws the lines of the UV grid within the unit square.
void drawUvGrid(SvgWriter& svg, const PagePoint& corner, double side);
/// Names the corners of the unit square, and where u and v run.
void drawUvNames(SvgWriter& svg, const PagePoint& corner, double side);

}  // namespace quarn
