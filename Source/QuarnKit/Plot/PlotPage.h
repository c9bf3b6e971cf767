/// \file
/// The page of a plot.
#pragma once

#include <string>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Plot/Views/PlotStretch.h>

namespace quarn {

/// An SVG document with a screen in perspective, from above, from the viewer and in UV.
/// \param unit what the screen's lengths are in
[[nodiscard]] std::string plotPage(const Screen& screen, const std::string& unit,
                                   PlotColor color = PlotColor::Side);

}  // namespace quarn
