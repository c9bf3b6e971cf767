#include "PlotPage.h"
#include "Finite.h"

#include <algorithm>
#include <optional>

#include "PlotLegend.h"
#include "PlotPanel.h"
#include "PlotStyle.h"
#include "PlotText.h"
#include "PlotUv.h"

namespace quarn {

namespace {

constexpr double kHeaderHeight = 104.0;
constexpr double kPanelWidth = (kPageWidth - 3 * kPageMargin) / 2;
constexpr double kPanelHeight = (kPageHeight - kHeaderHeight - 2 * kPageMargin) / 2;
constexpr double kUvWidth = kPanelWidth * 0.62;

// An eye point farther from the middle than this, in sizes of the surface, would make the surface too small.
constexpr double kFarthestEye = 2.0;

PlotScene sceneOf(const IScreenGeometry& geometry) {
    PlotScene scene{.surface = PlotSurface(geometry)};
    if (!scene.surface.isDrawable()) return scene;
    const Point<double, 3> eye = scene.surface.placed(geometry.getEyepoint());
    if (length(eye) <= kFarthestEye) scene.eye = eye;
    const Point<double, 3> heading = normalized(geometry.getCenterOfScreenHeading());
    if (isFinite(heading)) scene.heading = heading;
    return scene;
}

void drawHeader(SvgWriter& svg, const Screen& screen, const PlotScene& scene, const std::string& unit) {
    svg.text("title", {kPageMargin + 4.0, 34.0}, shortFileName(screen.file));
    svg.text("shape", {kPageWidth - kPageMargin - 4.0, 34.0}, shapeText(*screen.geometry, scene.surface),
             TextAnchor::End);
    svg.text("fact", {kPageMargin + 4.0, 60.0}, sizeText(scene.surface, unit));
    svg.text("fact", {kPageWidth - kPageMargin - 4.0, 60.0}, "digest " + shortDigest(*screen.geometry),
             TextAnchor::End);
    svg.text("fact", {kPageMargin + 4.0, 82.0}, parametersText(screen, unit));
}

void drawViews(SvgWriter& svg, const PlotScene& scene, const std::string& unit) {
    const Point<double, 3> extent = scene.surface.max() - scene.surface.min();
    const double longest = std::max({extent[0], extent[1], extent[2]});
    // A dimension that is nothing beside the others has no room for its line.
    const auto dimension = [&](std::size_t axis) {
        return extent[axis] < longest * 1e-3 ? std::string() : lengthText(extent[axis], unit);
    };

    const Box perspectiveBox = panelBox(0, 0);
    const PlotPanel perspective(scene, Camera::perspective(scene.eye ? length(*scene.eye) : 0.0));
    perspective.draw(svg, perspectiveBox,
                     perspective.frame().scaleInto(PlotPanel::drawingBox(perspectiveBox, false)),
                     std::nullopt);

    // The plan stands above the front at the same scale, so that the same x is below itself.
    const Box planBox = panelBox(1, 0);
    const Box frontBox = panelBox(1, 1);
    const PlotPanel plan(scene, Camera::plan());
    const PlotPanel front(scene, Camera::front());
    const double scale = std::min(plan.frame().scaleInto(PlotPanel::drawingBox(planBox, true)),
                                  front.frame().scaleInto(PlotPanel::drawingBox(frontBox, true)));
    plan.draw(svg, planBox, scale,
              Dimensions{.across = dimension(0), .upright = dimension(1), .isAcrossOnTop = true});
    front.draw(svg, frontBox, scale, Dimensions{.across = dimension(0), .upright = dimension(2)});
}

void drawNothing(SvgWriter& svg, const Box& box) {
    svg.text("fact", box.middle(), "not drawable: the screen has no finite positions that differ",
             TextAnchor::Middle);
}

}  // namespace

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

std::string plotPage(const Screen& screen, const std::string& unit) {
    const PlotScene scene = sceneOf(*screen.geometry);
    const std::string title = shortFileName(screen.file) + ": " + shapeText(*screen.geometry, scene.surface);
    SvgWriter svg(kPageWidth, kPageHeight, title, plotStyleSheet());
    svg.rectangle("page", {0.0, 0.0}, kPageWidth, kPageHeight);
    drawHeader(svg, screen, scene, unit);

    drawPanelFrame(svg, panelBox(0, 0), "Perspective");
    drawPanelFrame(svg, panelBox(1, 0), "Plan (from above)");
    drawPanelFrame(svg, panelBox(1, 1), "Front (from the viewer)");
    drawPanelFrame(svg, panelBox(0, 1), "UV layout");
    if (scene.surface.isDrawable()) {
        drawViews(svg, scene, unit);
    } else {
        for (const Box& box : {panelBox(0, 0), panelBox(1, 0), panelBox(1, 1)}) drawNothing(svg, box);
    }
    const Box lower = panelBox(0, 1);
    drawUvLayout(svg, {.corner = lower.corner, .width = kUvWidth, .height = lower.height}, scene.surface,
                 unit);
    drawLegend(svg,
               {.corner = lower.corner + PagePoint(kUvWidth, 0.0),
                .width = lower.width - kUvWidth,
                .height = lower.height},
               *screen.geometry, scene, unit);
    return svg.finish();
}

}  // namespace quarn
