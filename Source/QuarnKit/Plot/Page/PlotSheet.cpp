#include "PlotSheet.h"

#include <algorithm>
#include <optional>

#include <QuarnKit/Base/IsFinite.h>

#include "PlotText.h"

namespace quarn {

namespace {

constexpr double kPageWidth = 1200.0;
constexpr double kPageHeight = 900.0;
constexpr double kPageMargin = 14.0;
constexpr double kHeaderHeight = 104.0;
constexpr double kHeaderIndent = 4.0;
constexpr double kPanelWidth = (kPageWidth - 3 * kPageMargin) / 2;
constexpr double kPanelHeight = (kPageHeight - kHeaderHeight - 2 * kPageMargin) / 2;
constexpr double kUvWidth = kPanelWidth * 0.62;

// Maximum distance of the eye point from the origin, in sizes of the surface. A larger one would
// make the surface too small.
constexpr double kMaxEyeDistance = 2.0;

Box panelBox(int column, int row) {
    return {.corner = PagePoint(kPageMargin + column * (kPanelWidth + kPageMargin),
                                kHeaderHeight + row * (kPanelHeight + kPageMargin)),
            .width = kPanelWidth,
            .height = kPanelHeight};
}

void drawPanelFrame(SvgWriter& svg, const Box& box, const std::string& title) {
    svg.rectangle("panel", box.corner, box.width, box.height);
    svg.text("view", box.corner + PagePoint(12.0, 22.0), title);
}

}  // namespace

void addEye(PlotScene& scene, const IScreenGeometry& geometry, const Point<double, 3>& eye) {
    if (length(eye) <= kMaxEyeDistance) scene.eye = eye;
    const Point<double, 3> heading = normalized(geometry.getCenterOfScreenHeading());
    if (isFinite(heading)) scene.heading = heading;
}

SvgWriter newSheet(const SheetHeader& header, const std::string& styleSheet) {
    SvgWriter svg(kPageWidth, kPageHeight, header.file + ": " + header.shape, styleSheet);
    svg.rectangle("page", {0.0, 0.0}, kPageWidth, kPageHeight);
    const double left = kPageMargin + kHeaderIndent;
    const double right = kPageWidth - left;
    svg.text("title", {left, 34.0}, header.file);
    svg.text("shape", {right, 34.0}, header.shape, TextAnchor::End);
    svg.text("fact", {left, 60.0}, header.size);
    svg.text("fact", {right, 60.0}, "digest " + header.digest, TextAnchor::End);
    svg.text("fact", {left, 82.0}, header.facts);

    drawPanelFrame(svg, panelBox(0, 0), "Perspective");
    drawPanelFrame(svg, panelBox(1, 0), "Plan (from above)");
    drawPanelFrame(svg, panelBox(1, 1), "Front (from the viewer)");
    drawPanelFrame(svg, panelBox(0, 1), "UV layout");
    return svg;
}

void drawViews(SvgWriter& svg, const PlotScene& scene, const Point<double, 3>& extent,
               const std::string& unit) {
    const double longest = std::max({extent[0], extent[1], extent[2]});
    // A dimension that is negligible relative to the others has no line.
    const auto dimension = [&](std::size_t axis) {
        return extent[axis] < longest * 1e-3 ? std::string() : lengthText(extent[axis], unit);
    };

    const Box perspectiveBox = panelBox(0, 0);
    const PlotPanel perspective(scene, Camera::perspective(scene.eye ? length(*scene.eye) : 0.0));
    perspective.draw(
        svg, perspectiveBox,
        perspective.frame().scaleInto(PlotPanel::drawingBox(perspectiveBox, DimensionSpace::None)),
        std::nullopt);

    // The plan is above the front view at the same scale, so that equal x are aligned.
    const Box planBox = panelBox(1, 0);
    const Box frontBox = panelBox(1, 1);
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
    for (const Box& box : {panelBox(0, 0), panelBox(1, 0), panelBox(1, 1)})
        svg.text("fact", box.middle(), "not drawable: " + reason, TextAnchor::Middle);
}

Box uvBox() {
    const Box lower = panelBox(0, 1);
    return {.corner = lower.corner, .width = kUvWidth, .height = lower.height};
}

Box legendBox() {
    const Box lower = panelBox(0, 1);
    return {.corner = lower.corner + PagePoint(kUvWidth, 0.0),
            .width = lower.width - kUvWidth,
            .height = lower.height};
}

}  // namespace quarn
