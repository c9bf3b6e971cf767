#include "PlotPage.h"

#include <optional>
#include <utility>

#include <QuarnKit/Plot/Page/PlotLegend.h>
#include <QuarnKit/Plot/Page/PlotSheet.h>
#include <QuarnKit/Plot/Page/PlotStyle.h>
#include <QuarnKit/Plot/Page/PlotText.h>
#include <QuarnKit/Plot/Page/PlotUv.h>

namespace quarn {

namespace {

PlotScene sceneOf(const IScreenGeometry& geometry, const PlotSurface& surface, const StretchScale* stretch) {
    PlotScene scene{
        .view = [&surface, stretch](const Camera& camera, const std::optional<Point<double, 3>>& eye) {
            return SceneView{.shapes = surfaceShapes(surface, camera, stretch),
                             .isEyeHidden = eye && hides(surface, camera, *eye)};
        }};
    if (!surface.isDrawable()) return scene;
    scene.eyeView = eyeViewOf(geometry, surface);
    addEye(scene, geometry, surface.toScene(geometry.getEyepoint()));
    for (const auto& [u, v] : {std::pair(0, 0), std::pair(1, 0), std::pair(0, 1), std::pair(1, 1)})
        if (const auto position = surface.at(u * surface.columns(), v * surface.rows()))
            scene.corners.push_back({.u = u, .v = v, .position = *position});
    return scene;
}

}  // namespace

std::string plotPage(const Screen& screen, const std::string& unit, PlotColor color) {
    const IScreenGeometry& geometry = *screen.geometry;
    const PlotSurface surface(geometry);
    const StretchScale scale(surface.patches());
    const StretchScale* stretch = color == PlotColor::Stretch ? &scale : nullptr;
    const PlotScene scene = sceneOf(geometry, surface, stretch);
    SvgWriter svg = newSheet({.file = shortFileName(screen.file),
                              .shape = shapeText(geometry, surface),
                              .size = surface.isDrawable() ? sizeText(surface.min(), surface.max(), unit)
                                                           : "no size: no finite positions that differ",
                              .digest = shortDigest(geometry),
                              .facts = parametersText(screen, unit)},
                             plotStyleSheet() + (stretch != nullptr ? stretchStyleRules() : ""));
    if (surface.isDrawable())
        drawViews(svg, scene, surface.max() - surface.min(), unit);
    else
        drawNoViews(svg, "the screen has no finite positions that differ");
    drawUvLayout(svg, uvBox(), surface, unit, stretch);
    drawLegend(svg, legendBox(), geometry, scene, surface, unit, stretch);
    return svg.finish();
}

}  // namespace quarn
