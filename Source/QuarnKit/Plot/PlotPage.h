/// \file
/// The page of a plot of an analytic screen.
#pragma once

#include <string>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Plot/Views/PlotStretch.h>

namespace quarn {

/// Returns an SVG document with a screen from its center or its eye point, in perspective, from
/// above, from the viewer and in UV.
/// \param unit unit of the screen's lengths
[[nodiscard]] std::string plotPage(const Screen& screen, const std::string& unit,
                                   PlotColor color = PlotColor::Side);

}  // namespace quarn
