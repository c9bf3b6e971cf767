/// \file
/// The UV layout of a plot.
#pragma once

#include <string>

#include "PlotPanel.h"

namespace quarn {

/// Draws the unit square with its grid, its corners and the lengths of its edges on the surface.
/// \param stretch colors the square by the surface's stretch; nullptr for a plain square
void drawUvLayout(SvgWriter& svg, const Box& box, const PlotSurface& surface, const std::string& unit,
                  const StretchScale* stretch = nullptr);

/// Draws the lines of the UV grid within the unit square.
void drawUvGrid(SvgWriter& svg, const PagePoint& corner, double side);
/// Draws the names of the corners of the unit square, and the directions of u and v.
void drawUvNames(SvgWriter& svg, const PagePoint& corner, double side);

}  // namespace quarn
