/// \file
/// The page of a plot: a header above two columns of panels.
#pragma once

#include <string>

#include <QuarnScreen/IScreenGeometry.h>

#include "PlotPanel.h"

namespace quarn {

/// The texts above the panels.
struct SheetHeader {
    std::string file;
    std::string shape;
    std::string size;
    std::string digest;
    std::string facts;
};

/// Creates a page with its header and the frames of its panels.
[[nodiscard]] SvgWriter newSheet(const SheetHeader& header, const std::string& styleSheet,
                                 const std::string& definitions = {});

/// Adds the eye point, unless it is too far away, and the heading, if it has a direction.
/// \param eye the eye point in the scene
void addEye(PlotScene& scene, const IScreenGeometry& geometry, const Point<double, 3>& eye);

/// Draws the view from the eye point, the perspective, the plan and the front view.
/// \param extent extent of the surface, in \p unit
void drawViews(SvgWriter& svg, const PlotScene& scene, const Point<double, 3>& extent,
               const std::string& unit);
/// Draws the reason why there are no views.
void drawNoViews(SvgWriter& svg, const std::string& reason);

/// Return the two parts of the lower panel on the left.
[[nodiscard]] Box uvBox();
[[nodiscard]] Box legendBox();

}  // namespace quarn
