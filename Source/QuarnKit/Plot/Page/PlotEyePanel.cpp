#include "PlotEyePanel.h"

#include <string>

#include <QuarnKit/Base/NumberText.h>

#include "PlotText.h"

namespace quarn {

namespace {

// In pixels.
constexpr double kNoteBase = 12.0;  // from the lower edge up to the field of view
constexpr double kNoteHeight = 17.0;

std::string placeText(EyePlace place) {
    switch (place) {
        case EyePlace::Center:
            return "From the center";
        case EyePlace::BeforeScreen:
            return "From the front";
        case EyePlace::EyePoint:
            break;
    }
    return "From the eye point";
}

std::string projectionText(Projection projection) {
    switch (projection) {
        case Projection::Fisheye:
            return "fisheye";
        case Projection::Panorama:
            return "panorama";
        case Projection::Perspective:
        case Projection::Parallel:
            break;
    }
    return "perspective";
}

std::string degreesText(double radians) {
    return shortNumber(radians * kDegreesPerRadian, 1.0) + "°";
}

std::string fieldText(const EyeView& view, const Frame& frame) {
    if (view.camera.projection() == Projection::Fisheye)
        return "equidistant, " + degreesText(2 * view.maxAngle) + " across";
    const auto angle = [&](std::size_t axis) {
        return degreesText(view.camera.angleOf(frame.max()[axis]) - view.camera.angleOf(frame.min()[axis]));
    };
    return (view.camera.projection() == Projection::Panorama ? "azimuth × elevation: " : "field of view: ") +
           angle(0) + " × " + angle(1);
}

}  // namespace

void drawEyePanel(SvgWriter& svg, const Box& box, const PlotScene& scene) {
    if (!scene.eyeView) {
        drawPanelTitle(svg, box, placeText(EyePlace::EyePoint));
        return;
    }
    const EyeView& view = *scene.eyeView;
    drawPanelTitle(svg, box, placeText(view.place) + ": " + projectionText(view.camera.projection()));
    const PlotPanel panel(scene, view.camera, EyeMark::None);
    Box drawn = box;
    drawn.height -= kNoteHeight;
    const double scale = panel.frame().scaleInto(PlotPanel::drawingBox(drawn, DimensionSpace::None));
    panel.draw(svg, drawn, scale, std::nullopt);
    const PagePoint note = box.corner + PagePoint(box.width / 2, box.height - kNoteBase);
    const std::string reason =
        view.place == EyePlace::BeforeScreen ? "; the mesh passes through its eye point" : "";
    svg.text("note", note, fieldText(view, panel.frame()) + reason, TextAnchor::Middle);
}

}  // namespace quarn
