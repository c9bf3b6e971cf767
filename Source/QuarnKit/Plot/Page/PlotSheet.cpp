#include "PlotSheet.h"

#include <algorithm>
#include <optional>

#include <QuarnKit/Base/IsFinite.h>

#include "PlotEyePanel.h"
#include "PlotText.h"

namespace quarn {

namespace {

constexpr double kPageWidth = 1200.0;
constexpr double kPageHeight = 1298.0;
constexpr double kPageMargin = 14.0;
constexpr double kHeaderHeight = 104.0;
constexpr double kHeaderIndent = 4.0;
constexpr double kPanelWidth = (kPageWidth - 3 * kPageMargin) / 2;
constexpr double kColumnHeight = kPageHeight - kHeaderHeight - kPageMargin;
constexpr double kPanelHeight = (kColumnHeight - 2 * kPageMargin) / 3;
constexpr double kEyeHeight = 560.0;
constexpr double kLegendHeight = 204.0;

// Maximum distance of the eye point from the origin, in sizes of the surface. A larger one would
// make the surface too small.
constexpr double kMaxEyeDistance = 2.0;

// Panels of the right column.
enum class Row { Perspective, Plan, Front };

Box boxOf(Row row) {
    return {.corner = PagePoint(2 * kPageMargin + kPanelWidth,
                                kHeaderHeight + static_cast<int>(row) * (kPanelHeight + kPageMargin)),
            .width = kPanelWidth,
            .height = kPanelHeight};
}

// Panels of the left column.
Box eyeBox() {
    return {.corner = PagePoint(kPageMargin, kHeaderHeight), .width = kPanelWidth, .height = kEyeHeight};
}

Box uvPanelBox() {
    const double top = kEyeHeight + kPageMargin;
    return {.corner = PagePoint(kPageMargin, kHeaderHeight + top),
            .width = kPanelWidth,
            .height = kColumnHeight - top};
}

void drawPanelFrame(SvgWriter& svg, const Box& box) {
    svg.rectangle("panel", box.corner, box.width, box.height);
}

}  // namespace

void addEye(PlotScene& scene, const IScreenGeometry& geometry, const Point<double, 3>& eye) {
    if (length(eye) <= kMaxEyeDistance) scene.eye = eye;
    const Point<double, 3> heading = normalized(geometry.getCenterOfScreenHeading());
    if (isFinite(heading)) scene.heading = heading;
}

SvgWriter newSheet(const SheetHeader& header, const std::string& styleSheet, const std::string& definitions) {
    SvgWriter svg(kPageWidth, kPageHeight, header.file + ": " + header.shape, styleSheet, definitions);
    svg.rectangle("page", {0.0, 0.0}, kPageWidth, kPageHeight);
    const double left = kPageMargin + kHeaderIndent;
    const double right = kPageWidth - left;
    svg.text("title", {left, 34.0}, header.file);
    svg.text("shape", {right, 34.0}, header.shape, TextAnchor::End);
    svg.text("fact", {left, 60.0}, header.size);
    svg.text("fact", {right, 60.0}, "digest " + header.digest, TextAnchor::End);
    svg.text("fact", {left, 82.0}, header.facts);

    for (const Box& box :
         {eyeBox(), boxOf(Row::Perspective), boxOf(Row::Plan), boxOf(Row::Front), uvPanelBox()})
        drawPanelFrame(svg, box);
    drawPanelTitle(svg, boxOf(Row::Perspective), "Perspective");
    drawPanelTitle(svg, boxOf(Row::Plan), "Plan (from above)");
    drawPanelTitle(svg, boxOf(Row::Front), "Front (from the viewer)");
    drawPanelTitle(svg, uvPanelBox(), "UV layout");
    return svg;
}

void drawViews(SvgWriter& svg, const PlotScene& scene, const Point<double, 3>& extent,
               const std::string& unit) {
    const double longest = std::max({extent[0], extent[1], extent[2]});
    // A dimension that is negligible relative to the others has no line.
    const auto dimension = [&](std::size_t axis) {
        return extent[axis] < longest * 1e-3 ? std::string() : lengthText(extent[axis], unit);
    };

    drawEyePanel(svg, eyeBox(), scene);
    const Box perspectiveBox = boxOf(Row::Perspective);
    const PlotPanel perspective(scene, Camera::perspective(scene.eye ? length(*scene.eye) : 0.0));
    perspective.draw(
        svg, perspectiveBox,
        perspective.frame().scaleInto(PlotPanel::drawingBox(perspectiveBox, DimensionSpace::None)),
        std::nullopt);

    // The plan is above the front view at the same scale, so that equal x are aligned.
    const Box planBox = boxOf(Row::Plan);
    const Box frontBox = boxOf(Row::Front);
    const PlotPanel plan(scene, Camera::plan());
    const PlotPanel front(scene, Camera::front());
    const double scale =
        std::min(plan.frame().scaleInto(PlotPanel::drawingBox(planBox, DimensionSpace::Reserved)),
                 front.frame().scaleInto(PlotPanel::drawingBox(frontBox, DimensionSpace::Reserved)));
    plan.draw(svg, planBox, scale,
              Dimensions{.width = dimension(0), .height = dimension(1), .widthLine = WidthLine::Above});
    front.draw(svg, frontBox, scale, Dimensions{.width = dimension(0), .height = dimension(2)});
}

void drawNoViews(SvgWriter& svg, const std::string& reason) {
    drawEyePanel(svg, eyeBox(), {});
    for (const Box& box : {eyeBox(), boxOf(Row::Perspective), boxOf(Row::Plan), boxOf(Row::Front)})
        svg.text("fact", box.middle(), "not drawable: " + reason, TextAnchor::Middle);
}

Box uvBox() {
    Box box = uvPanelBox();
    box.height -= kLegendHeight;
    return box;
}

Box legendBox() {
    const Box panel = uvPanelBox();
    return {.corner = panel.corner + PagePoint(0.0, panel.height - kLegendHeight),
            .width = panel.width,
            .height = kLegendHeight};
}

}  // namespace quarn
