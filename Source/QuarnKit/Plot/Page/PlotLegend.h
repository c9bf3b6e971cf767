/// \file
/// The legend of a plot.
#pragma once

#include <string>

#include "PlotPanel.h"

namespace quarn {

/// Draws entries from top to bottom in two columns. Not safe on several threads.
class Legend {
public:
    Legend(SvgWriter& writer, const Box& legendBox);

    /// Begins an entry of some lines; the second column if the first one has no space for all.
    void begin(int lines);
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
    /// Returns true if the page shows a side, in any shade.
    [[nodiscard]] bool hasSide(const std::string& side) const;
    [[nodiscard]] bool hasClass(const std::string& styleClass) const { return svg.hasClass(styleClass); }

private:
    void addSwatch(const std::string& styleClass, double left, double width);

    SvgWriter& svg;
    Box box;
    PagePoint at;
};

/// Draws the meaning of the lines and colors that the page shows, the eye point and the heading.
/// The rest of the page has to be drawn before.
/// \param stretch meaning of the colors; nullptr for sides
void drawLegend(SvgWriter& svg, const Box& box, const IScreenGeometry& geometry, const PlotScene& scene,
                const PlotSurface& surface, const std::string& unit, const StretchScale* stretch = nullptr);

}  // namespace quarn
