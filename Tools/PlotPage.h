/// \file
/// The page of a plot.
#pragma once

#include <string>

#include "PlotLabels.h"
#include "ScreenReader.h"

namespace quarn {

// The page, in pixels: a header above two rows of two panels.
inline constexpr double kPageWidth = 1200.0;
inline constexpr double kPageHeight = 900.0;
inline constexpr double kPageMargin = 14.0;

[[nodiscard]] Box panelBox(int column, int row);

void drawPanelFrame(SvgWriter& svg, const Box& box, const std::string& title);

/// An SVG document with a screen in perspective, from above, from the viewer and in UV.
/// \param unit what the screen's lengths are in
[[nodiscard]] std::string plotPage(const Screen& screen, const std::string& unit);

}  // namespace quarn
