#include "PlotUv.h"

#include <algorithm>

#include "PlotText.h"

namespace quarn {

namespace {

constexpr double kMargin = 54.0;  // for labels around the square
constexpr double kLabelGap = 8.0;
constexpr double kTextHeight = 9.0;
constexpr double kArrowLength = 40.0;

std::string edgeText(const PlotSurface& surface, PlotSurface::Edge edge, const std::string& unit) {
    if (!surface.isDrawable()) return {};
    if (surface.isPoint(edge)) return "one point";
    return lengthText(surface.edgeLengths().at(edge), unit);
}

void drawStretch(SvgWriter& svg, const PagePoint& corner, double side, const PlotSurface& surface,
                 const StretchScale& stretch) {
    const PagePoint cell(side / surface.columns(), side / surface.rows());
    for (int row = 0; row < surface.rows(); ++row) {
        for (int column = 0; column < surface.columns(); ++column) {
            const auto patch = surface.patch(column, row);
            if (!patch) continue;
            const PagePoint from = corner + PagePoint(column * cell[0], row * cell[1]);
            const PagePoint to = from + cell;
            svg.area(stretch.classOf(*patch), {from, {to[0], from[1]}, to, {from[0], to[1]}});
        }
    }
}

void drawCornerNames(SvgWriter& svg, const PagePoint& corner, double side) {
    const double above = corner[1] - kLabelGap;
    const double below = corner[1] + side + kLabelGap + kTextHeight;
    const double right = corner[0] + side;
    svg.text("label", {corner[0], above}, "u=0 v=0");
    svg.text("label", {right, above}, "u=1 v=0", TextAnchor::End);
    svg.text("label", {corner[0], below}, "u=0 v=1");
    svg.text("label", {right, below}, "u=1 v=1", TextAnchor::End);
    for (const PagePoint& at : {corner, PagePoint(right, corner[1]), PagePoint(corner[0], corner[1] + side),
                                PagePoint(right, corner[1] + side)})
        svg.circle("corner", at, 2.5);
}

void drawEdgeLengths(SvgWriter& svg, const PagePoint& corner, double side, const PlotSurface& surface,
                     const std::string& unit) {
    const double middle = side / 2;
    const double offset = kLabelGap + kTextHeight + 3.0;
    svg.text("size", corner + PagePoint(middle, -kLabelGap), edgeText(surface, PlotSurface::Top, unit),
             TextAnchor::Middle);
    svg.text("size", corner + PagePoint(middle, side + kLabelGap + kTextHeight),
             edgeText(surface, PlotSurface::Bottom, unit), TextAnchor::Middle);
    svg.text("size", corner + PagePoint(-kLabelGap, middle), edgeText(surface, PlotSurface::Left, unit),
             TextAnchor::Middle, -90.0);
    svg.text("size", corner + PagePoint(side + offset, middle), edgeText(surface, PlotSurface::Right, unit),
             TextAnchor::Middle, -90.0);
}

void drawDirections(SvgWriter& svg, const PagePoint& corner) {
    const PagePoint start = corner + PagePoint(12.0, 12.0);
    drawArrow(svg, "axis", start, start + PagePoint(kArrowLength, 0.0));
    drawArrow(svg, "axis", start, start + PagePoint(0.0, kArrowLength));
    svg.text("label", start + PagePoint(kArrowLength + 4.0, 4.0), "u");
    svg.text("label", start + PagePoint(-3.0, kArrowLength + 13.0), "v");
}

}  // namespace

void drawUvGrid(SvgWriter& svg, const PagePoint& corner, double side) {
    for (int i = 1; i < kGridIntervals; ++i) {
        const double at = side * i / kGridIntervals;
        svg.line(kGridClass, {corner + PagePoint(at, 0.0), corner + PagePoint(at, side)});
        svg.line(kGridClass, {corner + PagePoint(0.0, at), corner + PagePoint(side, at)});
    }
}

void drawUvNames(SvgWriter& svg, const PagePoint& corner, double side) {
    drawCornerNames(svg, corner, side);
    drawDirections(svg, corner);
}

void drawUvLayout(SvgWriter& svg, const Box& box, const PlotSurface& surface, const std::string& unit,
                  const StretchScale* stretch) {
    const double side = std::min(box.width, box.height) - 2 * kMargin;
    const PagePoint corner = box.corner + PagePoint(box.width - side, box.height - side) * 0.5;
    svg.rectangle("square", corner, side, side);
    if (stretch != nullptr && surface.isDrawable()) drawStretch(svg, corner, side, surface, *stretch);
    drawUvGrid(svg, corner, side);
    svg.line(kBoundaryClass, {corner, corner + PagePoint(side, 0.0), corner + PagePoint(side, side),
                              corner + PagePoint(0.0, side), corner});
    drawCornerNames(svg, corner, side);
    drawEdgeLengths(svg, corner, side, surface, unit);
    drawDirections(svg, corner);
}

}  // namespace quarn
