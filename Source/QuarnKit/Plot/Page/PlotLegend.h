/// \file
/// The legend of a plot.
#pragma once

#include <string>

#include "PlotPanel.h"

namespace quarn {

/// Draws entries from top to bottom. Not safe on several threads.
class Legend {
public:
    /// \param first middle of the left side of the first entry
    Legend(SvgWriter& writer, const PagePoint& first) : svg(writer), at(first) {}

    void addText(const std::string& text);
    void addArea(const std::string& styleClass, const std::string& text);
    void addLine(const std::string& styleClass, const std::string& text);
    /// Adds the shades of a side.
    void addSide(const std::string& side, const std::string& text);
    /// Adds the scale of a stretch with its numbers.
    /// \param longestSide longest side of the surface, in \p unit; it is 1 for the areas of the
    /// scale
    void addStretch(const StretchScale& stretch, double longestSide, const std::string& unit);
    /// Adds the eye point and the heading.
    /// \param longestSide longest side of the surface, in \p unit
    void addEye(const PlotScene& scene, const IScreenGeometry& geometry, double longestSide,
                const std::string& unit);

private:
    void addSwatch(const std::string& styleClass, double left, double width);

    SvgWriter& svg;
    PagePoint at;
};

/// Draws the meaning of lines and colors, the eye point and the heading.
/// \param stretch meaning of the colors; nullptr for sides
void drawLegend(SvgWriter& svg, const Box& box, const IScreenGeometry& geometry, const PlotScene& scene,
                const PlotSurface& surface, const std::string& unit, const StretchScale* stretch = nullptr);

}  // namespace quarn
