#include "PlotPanel.h"

#include <algorithm>
#include <array>

namespace quarn {

namespace {

// Distances on the page, in pixels.
constexpr double kSideMargin = 92.0;  // for height dimensions and labels next to the drawing
constexpr double kTopMargin = 70.0;   // for the panel's title, dimensions and labels
constexpr double kBottomMargin = 58.0;
constexpr double kPlainSideMargin = 70.0;  // for labels alone
constexpr double kPlainTopMargin = 44.0;
constexpr double kPlainBottomMargin = 36.0;
constexpr double kDimensionGap = 30.0;
constexpr double kHeightDimensionGap = 58.0;
constexpr double kTick = 4.0;
constexpr double kSameLabelPlace = 14.0;
constexpr double kLabelGap = 8.0;
constexpr double kTextHeight = 8.0;  // of a digit
constexpr double kBoldWidth = 1.25;  // of a dimension's text, in widths of a label's
constexpr double kArrowHead = 8.0;
constexpr double kEyeRadius = 4.5;
constexpr double kAxisLength = 26.0;
constexpr double kTitleWidth = 240.0;  // of the panel's title
constexpr double kTitleHeight = 28.0;

constexpr double kHeadingLength = 0.3;  // in sizes of the surface

// Returns the label of corners that coincide in a view, as in "u=0|1 v=1".
std::string cornerText(const std::vector<SceneCorner>& corners) {
    const auto values = [&](auto coordinate) {
        bool hasZero = false;
        bool hasOne = false;
        for (const SceneCorner& corner : corners) (coordinate(corner) == 0 ? hasZero : hasOne) = true;
        return std::string(hasZero && hasOne ? "0|1" : hasZero ? "0" : "1");
    };
    return "u=" + values([](const SceneCorner& corner) { return corner.u; }) +
           " v=" + values([](const SceneCorner& corner) { return corner.v; });
}

}  // namespace

double Frame::scaleInto(const Box& box) const {
    const ViewPoint extent = bounds.extent();
    constexpr double kMinExtent = 1e-3;  // for a view in which the surface is a point
    return std::min(box.width / std::max(extent[0], kMinExtent),
                    box.height / std::max(extent[1], kMinExtent));
}

void drawArrow(SvgWriter& svg, const std::string& styleClass, const PagePoint& from, const PagePoint& to) {
    const double distance = length(to - from);
    if (distance < kArrowHead) return;
    const PagePoint along = (to - from) / distance;
    const PagePoint across(-along[1], along[0]);
    const PagePoint neck = to - along * kArrowHead;
    const std::vector<PagePoint> head = {to, neck + across * (kArrowHead * 0.45),
                                         neck - across * (kArrowHead * 0.45)};
    svg.line("halo", {from, neck});
    svg.area("halo-head", head);
    svg.line(styleClass, {from, neck});
    svg.area(styleClass + "-head", head);
}

void drawPanelTitle(SvgWriter& svg, const Box& box, const std::string& title) {
    svg.text("view", box.corner + PagePoint(12.0, 22.0), title);
}

void drawPanelNote(SvgWriter& svg, const Box& box, const std::string& note) {
    if (note.empty()) return;
    svg.text("note", box.corner + PagePoint(box.width - 12.0, 22.0), note, TextAnchor::End);
}

// Draws one panel.
class PlotPanel::Drawing {
public:
    Drawing(const PlotPanel& drawnPanel, SvgWriter& writer, const Box& panelBox, double pixelsPerSize,
            const PagePoint& drawingMiddle)
        : panel(drawnPanel),
          svg(writer),
          box(panelBox),
          scale(pixelsPerSize),
          middle(drawingMiddle),
          labels(panelBox) {
        const PagePoint from = toPage(panel.surfaceFrame.min());
        const PagePoint to = toPage(panel.surfaceFrame.max());
        surfaceBox = {
            .corner = PagePoint(from[0], to[1]), .width = to[0] - from[0], .height = from[1] - to[1]};
    }

    void drawSurface();
    void drawEye();
    void drawCorners();
    void drawAxes();
    void drawWidth(const std::string& text, WidthLine place);
    void drawHeight(const std::string& text);

private:
    [[nodiscard]] PagePoint toPage(const ViewPoint& point) const {
        const ViewPoint offset = (point - panel.wholeFrame.middle()) * scale;
        return middle + PagePoint(offset[0], -offset[1]);
    }
    [[nodiscard]] std::vector<PagePoint> toPage(const std::vector<ViewPoint>& points) const {
        std::vector<PagePoint> result;
        result.reserve(points.size());
        for (const ViewPoint& point : points) result.push_back(toPage(point));
        return result;
    }
    void drawDimensionLine(const PagePoint& from, const PagePoint& to);

    const PlotPanel& panel;
    SvgWriter& svg;
    const Box& box;
    double scale;
    PagePoint middle;
    LabelPlacer labels;
    Box surfaceBox;
};

void PlotPanel::Drawing::drawSurface() {
    for (const Shape& shape : panel.view.shapes) {
        std::vector<PagePoint> points = toPage(shape.points);
        if (shape.isArea) {
            std::vector<std::vector<PagePoint>> holes;
            for (const auto& hole : shape.holes) holes.push_back(toPage(hole));
            svg.area(shape.styleClass, points, holes);
            labels.avoidArea(std::move(points));
        } else {
            svg.line(shape.styleClass, points);
            for (std::size_t i = 1; i < points.size() && shape.styleClass != kGridClass; ++i)
                labels.avoidLine(points[i - 1], points[i]);
        }
    }
}

void PlotPanel::Drawing::drawEye() {
    if (!panel.eye) return;
    const bool isHidden = panel.view.isEyeHidden;
    const PagePoint eye = toPage(panel.camera.project(*panel.eye));
    if (panel.scene.heading) {
        const Point<double, 3> tip = *panel.eye + *panel.scene.heading * kHeadingLength;
        const PagePoint to = toPage(panel.camera.project(tip));
        drawArrow(svg, isHidden ? "heading-hidden" : "heading", eye, to);
        labels.avoidLine(eye, to);
    }
    svg.circle("halo-circle", eye, kEyeRadius);
    svg.circle(isHidden ? "eye-hidden" : "eye", eye, kEyeRadius);
    labels.avoidBox(
        {.corner = eye - PagePoint(kLabelGap, kLabelGap), .width = 2 * kLabelGap, .height = 2 * kLabelGap});
}

void PlotPanel::Drawing::drawCorners() {
    struct Label {
        PagePoint at;
        std::vector<SceneCorner> corners;
    };
    std::vector<Label> places;
    for (const SceneCorner& corner : panel.scene.corners) {
        const PagePoint at = toPage(panel.camera.project(corner.position));
        const auto same = std::find_if(places.begin(), places.end(), [&](const Label& label) {
            return length(label.at - at) < kSameLabelPlace;
        });
        if (same != places.end())
            same->corners.push_back(corner);
        else
            places.push_back({at, {corner}});
    }
    for (const Label& label : places) {
        const std::string text = cornerText(label.corners);
        const LabelPlace place = labels.place(label.at, text, surfaceBox);
        svg.circle("corner", label.at, 2.5);
        svg.text("label", place.at, text, place.anchor);
    }
}

void PlotPanel::Drawing::drawAxes() {
    const PagePoint origin = box.corner + PagePoint(34.0, box.height - 32.0);
    const std::array<const char*, 3> names = {"X", "Y", "Z"};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Point<double, 3> direction;
        direction[axis] = 1.0;
        const ViewPoint seen = panel.camera.projectDirection(direction);
        const PagePoint along(seen[0], -seen[1]);
        if (length(along) * kAxisLength < kArrowHead) continue;
        drawArrow(svg, "axis", origin, origin + along * kAxisLength);
        const PagePoint name = origin + along * kAxisLength + along * (kLabelGap / length(along));
        svg.text("label", name + PagePoint(0.0, kTextHeight * 0.5), names.at(axis), TextAnchor::Middle);
    }
    labels.avoidBox({.corner = box.corner, .width = kTitleWidth, .height = kTitleHeight});
    labels.avoidBox({.corner = origin - PagePoint(kLabelGap, 2 * kAxisLength),
                     .width = 2 * kAxisLength,
                     .height = 2 * kAxisLength + kLabelGap});
}

void PlotPanel::Drawing::drawDimensionLine(const PagePoint& from, const PagePoint& to) {
    svg.line("dimension", {from, to});
    for (const PagePoint& end : {from, to})
        svg.line("dimension", {end + PagePoint(-kTick, kTick), end + PagePoint(kTick, -kTick)});
    labels.avoidLine(from, to);
}

void PlotPanel::Drawing::drawWidth(const std::string& text, WidthLine place) {
    if (text.empty()) return;
    const bool isOnTop = place == WidthLine::Above;
    const double left = surfaceBox.corner[0];
    const double right = left + surfaceBox.width;
    const double edge = surfaceBox.corner[1] + (isOnTop ? 0.0 : surfaceBox.height);
    const double y = edge + (isOnTop ? -kDimensionGap : kDimensionGap);
    for (const double x : {left, right}) {
        const PagePoint end(x, y + (isOnTop ? -kTick : kTick));
        svg.line("dimension", {{x, edge + (y - edge) * 0.2}, end});
        labels.avoidLine({x, edge}, end);
    }
    drawDimensionLine({left, y}, {right, y});
    const double textY = isOnTop ? y - kTick - 2.0 : y + kTick + kTextHeight + 3.0;
    svg.text("size", {(left + right) * 0.5, textY}, text, TextAnchor::Middle);
    const double width = labelWidth(text) * kBoldWidth;
    labels.avoidBox({.corner = PagePoint((left + right - width) * 0.5, textY - kTextHeight),
                     .width = width,
                     .height = kTextHeight});
}

void PlotPanel::Drawing::drawHeight(const std::string& text) {
    if (text.empty()) return;
    const double edge = surfaceBox.corner[0] + surfaceBox.width;
    const double x = edge + kHeightDimensionGap;
    const double top = surfaceBox.corner[1];
    const double bottom = top + surfaceBox.height;
    for (const double y : {top, bottom}) {
        svg.line("dimension", {{edge + (x - edge) * 0.2, y}, {x + kTick, y}});
        labels.avoidLine({edge + (x - edge) * 0.2, y}, {x + kTick, y});
    }
    drawDimensionLine({x, top}, {x, bottom});
    const double width = labelWidth(text) * kBoldWidth;
    if (width <= surfaceBox.height) {
        const double base = x + kTick + kTextHeight + 4.0;
        svg.text("size", {base, (top + bottom) * 0.5}, text, TextAnchor::Middle, -90.0);
        return;
    }
    // The text is longer than the line; place it below.
    const double textX = std::min(x, box.corner[0] + box.width - width / 2 - kLabelGap);
    const double base = bottom + kTick + kTextHeight + kLabelGap;
    svg.text("size", {textX, base}, text, TextAnchor::Middle);
    labels.avoidBox(
        {.corner = PagePoint(textX - width / 2, base - kTextHeight), .width = width, .height = kTextHeight});
}

PlotPanel::PlotPanel(const PlotScene& shownScene, const Camera& viewCamera, EyeMark eyeMark)
    : scene(shownScene),
      camera(viewCamera),
      eye(eyeMark == EyeMark::Drawn ? scene.eye : std::nullopt),
      view(scene.view(camera, eye)) {
    for (const Shape& shape : view.shapes)
        for (const ViewPoint& point : shape.points) surfaceFrame.include(point);
    // A closed plane without a UV grid is not visible from its edge; it is a point then.
    if (view.shapes.empty()) surfaceFrame.include({0.0, 0.0});
    wholeFrame = surfaceFrame;
    if (!eye) return;
    wholeFrame.include(camera.project(*eye));
    if (scene.heading) wholeFrame.include(camera.project(*eye + *scene.heading * kHeadingLength));
}

Box PlotPanel::drawingBox(const Box& box, DimensionSpace space) {
    const bool hasDimensions = space == DimensionSpace::Reserved;
    const double side = hasDimensions ? kSideMargin : kPlainSideMargin;
    const double top = hasDimensions ? kTopMargin : kPlainTopMargin;
    const double bottom = hasDimensions ? kBottomMargin : kPlainBottomMargin;
    return {.corner = box.corner + PagePoint(side, top),
            .width = box.width - 2 * side,
            .height = box.height - top - bottom};
}

void PlotPanel::draw(SvgWriter& svg, const Box& box, double scale,
                     const std::optional<Dimensions>& dimensions) const {
    const auto space = dimensions ? DimensionSpace::Reserved : DimensionSpace::None;
    Drawing drawing(*this, svg, box, scale, drawingBox(box, space).middle());
    drawing.drawSurface();
    if (dimensions) {
        drawing.drawWidth(dimensions->width, dimensions->widthLine);
        drawing.drawHeight(dimensions->height);
    }
    drawing.drawAxes();
    drawing.drawEye();
    drawing.drawCorners();
    drawPanelNote(svg, box, view.note);
}

}  // namespace quarn
