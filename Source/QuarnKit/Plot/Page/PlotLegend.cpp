#include "PlotLegend.h"

#include <cmath>

#include "PlotText.h"

namespace quarn {

namespace {

constexpr double kLineHeight = 20.0;
constexpr double kSampleWidth = 26.0;
constexpr double kSampleHeight = 12.0;
constexpr double kTextColumn = 36.0;
constexpr double kTextBase = 4.0;  // from the middle of a sample down to the baseline
constexpr double kStepWidth = 11.0;
constexpr double kRounding = 1e-9;    // of computed ratios
constexpr double kFirstEntry = 66.0;  // below the upper edge of the panel

// Formats a ratio such as "1/4" or "1.414".
std::string ratioText(double ratio) {
    const double inverse = std::round(1.0 / ratio);
    const bool isFraction = inverse > 1.0 && std::abs(ratio * inverse - 1.0) < kRounding;
    return isFraction ? "1/" + shortNumber(inverse, 0.0) : shortNumber(ratio, 0.0);
}

// Rounds a coordinate of a direction to a thousandth.
double rounded(double coordinate) {
    return std::round(coordinate * 1e3) / 1e3;
}

}  // namespace

void Legend::addText(const std::string& text) {
    svg.text("note", at + PagePoint(kTextColumn, kTextBase), text);
    at = at + PagePoint(0.0, kLineHeight);
}

void Legend::addSwatch(const std::string& styleClass, double left, double width) {
    const PagePoint from = at + PagePoint(left, -kSampleHeight / 2);
    const PagePoint to = from + PagePoint(width, kSampleHeight);
    svg.area(styleClass, {from, {to[0], from[1]}, to, {from[0], to[1]}});
}

void Legend::addArea(const std::string& styleClass, const std::string& text) {
    addSwatch(styleClass, 0.0, kSampleWidth);
    addText(text);
}

void Legend::addLine(const std::string& styleClass, const std::string& text) {
    svg.line(styleClass, {at, at + PagePoint(kSampleWidth, 0.0)});
    addText(text);
}

void Legend::addSide(const std::string& side, const std::string& text) {
    for (int i = 0; i < 3; ++i)
        addSwatch(side + std::to_string(kShades / 2 + 3 * i), kSampleWidth * i / 3, kSampleWidth / 3);
    addText(text);
}

void Legend::addStretch(const StretchScale& stretch, double longestSide, const std::string& unit) {
    svg.text("note", at + PagePoint(0.0, kTextBase), "area per UV area over the mean:");
    at = at + PagePoint(0.0, kLineHeight);
    for (int i = 0; i < kStretchSteps; ++i)
        addSwatch(kStretchClass + std::to_string(i), kStepWidth * i, kStepWidth);
    at = at + PagePoint(0.0, kLineHeight);
    constexpr int kNumbers = 5;
    for (int i = 0; i < kNumbers; ++i) {
        const int step = (kStretchSteps - 1) * i / (kNumbers - 1);
        svg.text("note", at + PagePoint(kStepWidth * (step + 0.5), 0.0), ratioText(stretch.valueOf(step)),
                 TextAnchor::Middle);
    }
    at = at + PagePoint(0.0, kLineHeight);
    svg.text("note", at,
             "mean: " + lengthText(stretch.mean() * longestSide * longestSide, unit) + "² for u, v 0 to 1");
    at = at + PagePoint(0.0, kLineHeight);
}

void Legend::addEye(const PlotScene& scene, const IScreenGeometry& geometry, double longestSide,
                    const std::string& unit) {
    svg.circle("eye", at + PagePoint(kSampleWidth / 2, 0.0), 4.5);
    addText("eye point; dashed: hidden");
    addText(positionText(geometry.getEyepoint(), longestSide) + " " + unit);
    if (!scene.eye) addText("too far away to be drawn");
    drawArrow(svg, "heading", at, at + PagePoint(kSampleWidth, 0.0));
    addText("heading");
    const Point<double, 3> heading = geometry.getCenterOfScreenHeading();
    addText(positionText({rounded(heading[0]), rounded(heading[1]), rounded(heading[2])}, 1.0));
}

void drawLegend(SvgWriter& svg, const Box& box, const IScreenGeometry& geometry, const PlotScene& scene,
                const PlotSurface& surface, const std::string& unit, const StretchScale* stretch) {
    Legend legend(svg, box.corner + PagePoint(0.0, kFirstEntry));
    if (stretch != nullptr) {
        legend.addStretch(*stretch, surface.longestSide(), unit);
    } else {
        legend.addSide(kFrontClass, "front: u to the right,");
        legend.addText("v downwards");
        legend.addSide(kBackClass, "back: pictures are mirrored");
    }
    legend.addLine(kBoundaryClass, "boundary");
    if (surface.isDrawable() && surface.closesAlongU()) legend.addLine(kSeamClass, "seam: u=0 meets u=1");
    legend.addLine(kGridClass, "u and v in steps of 1/8");
    legend.addEye(scene, geometry, surface.longestSide(), unit);
}

}  // namespace quarn
