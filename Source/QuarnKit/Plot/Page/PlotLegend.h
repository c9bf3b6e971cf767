/// \file
/// The legend of a plot.
#pragma once

#include <string>

#include "PlotPanel.h"

namespace quarn {

/// Draws one entry after the other, downwards.
class Legend {
public:
    /// \param first middle of the left end of the first entry
    Legend(SvgWriter& writer, const PagePoint& first) : svg(writer), at(first) {}

    void addText(const std::string& text);
    void addArea(const std::string& styleClass, const std::string& text);
    void addLine(const std::string& styleClass, const std::string& text);
    /// The shades of a side.
    void addSide(const std::string& side, const std::string& text);
    /// The scale of a stretch with its numbers.
    /// \param longestSide of the surface, in \p unit; areas of the scale take it for 1
    void addStretch(const StretchScale& stretch, double longestSide, const std::string& unit);
    /// Eye point and heading.
    /// \param longestSide as above
    void addEye(const PlotScene& scene, const IScreenGeometry& geometry, double longestSide,
                const std::string& unit);

private:
    void addSwatch(const std::string& styleClass, double left, double width);

    SvgWriter& svg;
    PagePoint at;
};

/// Says what the strokes and colours of a plot mean, and where the eye point is.
/// \param stretch what the colours tell, where it is not the sides
void drawLegend(SvgWriter& svg, const Box& box, const IScreenGeometry& geometry, const PlotScene& scene,
                const PlotSurface& surface, const std::string& unit, const StretchScale* stretch = nullptr);

}  // namespace quarn
