#include "PlotLegend.h"

#include <algorithm>

#include "PlotText.h"

namespace quarn {

namespace {

constexpr double kLineHeight = 20.0;
constexpr double kSampleWidth = 26.0;
constexpr double kTextColumn = 36.0;
constexpr double kTextBase = 4.0;  // from a sample's middle down to the line that letters stand on

// Draws one entry after the other, downwards.
class Legend {
public:
    Legend(SvgWriter& writer, const PagePoint& first) : svg(writer), at(first) {}

    void addSide(const std::string& side, const std::string& text) {
        for (int i = 0; i < 3; ++i) {
            const double left = at[0] + kSampleWidth * i / 3;
            const double right = at[0] + kSampleWidth * (i + 1) / 3;
            svg.area(side + std::to_string(kShades / 2 + 3 * i),
                     {{left, at[1] - 6.0}, {right, at[1] - 6.0}, {right, at[1] + 6.0}, {left, at[1] + 6.0}});
        }
        addText(text);
    }
    void addLine(const std::string& styleClass, const std::string& text) {
        svg.line(styleClass, {at, at + PagePoint(kSampleWidth, 0.0)});
        addText(text);
    }
    void addEye(const std::string& text) {
        svg.circle("eye", at + PagePoint(kSampleWidth / 2, 0.0), 4.5);
        addText(text);
    }
    void addHeading(const std::string& text) {
        drawArrow(svg, "heading", at, at + PagePoint(kSampleWidth, 0.0));
        addText(text);
    }
    void addText(const std::string& text) {
        svg.text("note", at + PagePoint(kTextColumn, kTextBase), text);
        at = at + PagePoint(0.0, kLineHeight);
    }

private:
    SvgWriter& svg;
    PagePoint at;
};

}  // namespace

void drawLegend(SvgWriter& svg, const Box& box, const IScreenGeometry& geometry, const PlotScene& scene,
                const std::string& unit) {
    Legend legend(svg, box.corner + PagePoint(0.0, 66.0));
    legend.addSide(kFrontClass, "front: u runs to the right,");
    legend.addText("v downwards");
    legend.addSide(kBackClass, "back: pictures are mirrored");
    legend.addLine(kOutlineClass, "edge of the screen");
    if (scene.surface.isDrawable() && scene.surface.closesAlongU())
        legend.addLine(kSeamClass, "seam: u=0 meets u=1");
    legend.addLine(kGridClass, "u and v in steps of 1/8");

    const Point<double, 3> extent = scene.surface.max() - scene.surface.min();
    const double scale = scene.surface.isDrawable() ? std::max({extent[0], extent[1], extent[2]}) : 0.0;
    legend.addEye("eye point; dashed: hidden");
    legend.addText(positionText(geometry.getEyepoint(), scale) + " " + unit);
    if (!scene.eye) legend.addText("too far away to be drawn");
    legend.addHeading("heading");
    legend.addText(positionText(geometry.getCenterOfScreenHeading(), 1.0));
}

}  // namespace quarn
