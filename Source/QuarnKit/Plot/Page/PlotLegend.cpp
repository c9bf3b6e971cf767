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
constexpr double kTickEnd = 8.0;    // from the middle of the scale's numbers up
constexpr double kRounding = 1e-9;  // of computed ratios
constexpr double kIndent = 26.0;    // of a column
constexpr double kTop = 16.0;       // above the middle of the first line

// Formats a ratio such as "1/4", "2/3" or "1.5".
std::string ratioText(double ratio) {
    for (const double numerator : {1.0, 2.0}) {
        const double denominator = std::round(numerator / ratio);
        if (denominator > numerator && std::abs(ratio * denominator / numerator - 1.0) < kRounding)
            return shortNumber(numerator, 0.0) + "/" + shortNumber(denominator, 0.0);
    }
    return shortNumber(ratio, 0.0);
}

// Rounds a coordinate of a direction to a thousandth.
double rounded(double coordinate) {
    return std::round(coordinate * 1e3) / 1e3;
}

}  // namespace

Legend::Legend(SvgWriter& writer, const Box& legendBox)
    : svg(writer), box(legendBox), at(box.corner + PagePoint(kIndent, kTop)) {}

void Legend::begin(int lines) {
    const bool isFirstColumn = at[0] < box.middle()[0];
    if (!isFirstColumn || at[1] + (lines - 1) * kLineHeight + kTop <= box.corner[1] + box.height) return;
    at = PagePoint(box.middle()[0] + kIndent / 2, box.corner[1] + kTop);
}

bool Legend::hasSide(const std::string& side) const {
    for (int shade = 0; shade < kShades; ++shade)
        if (svg.hasClass(side + std::to_string(shade))) return true;
    return false;
}

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
    begin(1);
    addSwatch(styleClass, 0.0, kSampleWidth);
    addText(text);
}

void Legend::addLine(const std::string& styleClass, const std::string& text) {
    begin(1);
    svg.line(styleClass, {at, at + PagePoint(kSampleWidth, 0.0)});
    addText(text);
}

void Legend::addSide(const std::string& side, const std::string& text) {
    begin(1);
    for (int i = 0; i < 3; ++i)
        addSwatch(side + std::to_string(kShades / 2 + 3 * i), kSampleWidth * i / 3, kSampleWidth / 3);
    addText(text);
}

void Legend::addStretch(const StretchScale& stretch, double longestSide, const std::string& unit) {
    begin(4);
    svg.text("note", at + PagePoint(0.0, kTextBase), "area per UV area over the mean:");
    at = at + PagePoint(0.0, kLineHeight);
    for (int i = 0; i < kStretchSteps; ++i)
        addSwatch(kStretchClass + std::to_string(i), kStepWidth * i, kStepWidth);
    at = at + PagePoint(0.0, kLineHeight);
    for (const double number : stretch.roundNumbers()) {
        const PagePoint place = at + PagePoint(kStepWidth * (stretch.placeOf(number) + 0.5), 0.0);
        svg.line("dimension",
                 {place - PagePoint(0.0, kLineHeight - kSampleHeight / 2), place - PagePoint(0.0, kTickEnd)});
        svg.text("note", place + PagePoint(0.0, kTextBase), ratioText(number), TextAnchor::Middle);
    }
    at = at + PagePoint(0.0, kLineHeight);
    svg.text("note", at + PagePoint(0.0, kTextBase),
             "mean: " + lengthText(stretch.mean() * longestSide * longestSide, unit) + "² for u, v 0 to 1");
    at = at + PagePoint(0.0, kLineHeight);
}

void Legend::addEye(const PlotScene& scene, const IScreenGeometry& geometry, double longestSide,
                    const std::string& unit) {
    const bool isFar = scene.eyeView && !scene.eye;
    begin(isFar ? 3 : 2);
    svg.circle("eye", at + PagePoint(kSampleWidth / 2, 0.0), 4.5);
    addText(hasClass("eye-hidden") ? "eye point; dashed: hidden" : "eye point");
    addText(positionText(geometry.getEyepoint(), longestSide) + " " + unit);
    if (isFar) addText("too far away to be drawn");
    if (!scene.heading) return;
    begin(2);
    drawArrow(svg, "heading", at, at + PagePoint(kSampleWidth, 0.0));
    addText("heading");
    const Point<double, 3> heading = geometry.getCenterOfScreenHeading();
    addText(positionText({rounded(heading[0]), rounded(heading[1]), rounded(heading[2])}, 1.0));
}

void drawLegend(SvgWriter& svg, const Box& box, const IScreenGeometry& geometry, const PlotScene& scene,
                const PlotSurface& surface, const std::string& unit, const StretchScale* stretch) {
    Legend legend(svg, box);
    if (stretch != nullptr) legend.addStretch(*stretch, surface.longestSide(), unit);
    if (legend.hasSide(kFrontClass)) legend.addSide(kFrontClass, "front: u to the right, v downwards");
    if (legend.hasSide(kBackClass)) legend.addSide(kBackClass, "back: pictures are mirrored");
    legend.addLine(kBoundaryClass, "boundary");
    if (legend.hasClass(kSeamClass)) legend.addLine(kSeamClass, "seam: u=0 meets u=1");
    legend.addLine(kGridClass, "u and v in steps of 1/8");
    legend.addEye(scene, geometry, surface.longestSide(), unit);
}

}  // namespace quarn
