#include "PlotMeshUv.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include <QuarnKit/Plot/Page/PlotText.h>
#include <QuarnKit/Plot/Page/PlotUv.h>

#include "PlotLines.h"
#include "PlotMeshViews.h"
#include "PlotRegions.h"
#include "PlotUvOverlap.h"

namespace quarn {

namespace {

constexpr double kMargin = 54.0;  // for labels around the square
// UVs farther than this from the unit square are drawn at this distance.
constexpr double kMaxUvDistance = 1.0;
constexpr double kTolerance = 0.25;  // of lines, in pixels
// Minimum height in pixels of most triangles whose edges are drawn. Edges that are nearer to each
// other, or to the lines of the grid, would make a pattern of their own.
constexpr double kMinEdgeHeight = 9.0;
// Below this height, the edges are pale.
constexpr double kMinStrongHeight = 18.0;

// Height of bad triangles: higher ones are drawn later.
constexpr double kBadHeight = 0.1;

class UvPainter {
public:
    UvPainter(SvgWriter& writer, const Box& panelBox, const PlotMeshData& drawnMesh);

    /// Returns a note about triangles that are not drawn.
    [[nodiscard]] std::string drawTriangles(const StretchScale* stretch) const;
    void drawDots() const;
    void drawOverlap() const;
    void drawEdges() const;
    void drawSquare() const { svg.rectangle("space", toPage({0.0, 0.0}), scale, scale); }
    void drawGrid() const { drawUvGrid(svg, toPage({0.0, 0.0}), scale); }
    void drawNames() const { drawUvNames(svg, toPage({0.0, 0.0}), scale); }
    void drawRange() const;

private:
    [[nodiscard]] PagePoint toPage(const Point<double, 2>& uv) const {
        return middle + (uv - frame.middle()) * scale;
    }
    void drawArea(const Shape& shape) const;
    [[nodiscard]] const char* plainClass() const;
    [[nodiscard]] TriangleCorners cornersOf(std::size_t triangle) const;
    // From the view's plane, where v points upwards.
    [[nodiscard]] std::vector<PagePoint> fromView(const std::vector<ViewPoint>& points) const {
        std::vector<PagePoint> result;
        result.reserve(points.size());
        for (const ViewPoint& point : points) result.push_back(toPage({point[0], -point[1]}));
        return result;
    }

    SvgWriter& svg;
    const Box& box;
    const PlotMeshData& mesh;
    PagePoint middle;
    Frame frame;
    Frame range;  // of all UVs
    double scale = 1.0;
};

Point<double, 2> nearSquare(const Point<double, 2>& uv) {
    return {std::clamp(uv[0], -kMaxUvDistance, 1.0 + kMaxUvDistance),
            std::clamp(uv[1], -kMaxUvDistance, 1.0 + kMaxUvDistance)};
}

UvPainter::UvPainter(SvgWriter& writer, const Box& panelBox, const PlotMeshData& drawnMesh)
    : svg(writer), box(panelBox), mesh(drawnMesh) {
    frame.include({0.0, 0.0});
    frame.include({1.0, 1.0});
    for (std::size_t i = 0; i < mesh.uvs.size(); ++i) {
        if (!mesh.marks[i].hasUV) continue;
        for (const Point<double, 2>& uv : mesh.uvs[i]) {
            range.include(uv);
            frame.include(nearSquare(uv));
        }
    }
    const double side = std::min(box.width, box.height) - 2 * kMargin;
    middle = box.middle();
    scale = frame.scaleInto({.corner = box.corner, .width = side, .height = side});
}

// Corners in the view's plane.
TriangleCorners UvPainter::cornersOf(std::size_t triangle) const {
    TriangleCorners corners;
    for (std::size_t i = 0; i < 3; ++i) {
        const Point<double, 2> uv = nearSquare(mesh.uvs[triangle].at(i));
        corners.at(i) = {uv[0], -uv[1], mesh.marks[triangle].hasBadUV() ? kBadHeight : 0.0};
    }
    return corners;
}

// Returns the class of triangles without a defect, by the median of their heights.
const char* UvPainter::plainClass() const {
    std::vector<double> heights;
    for (std::size_t i = 0; i < mesh.uvs.size(); ++i) {
        if (!mesh.marks[i].hasUV) continue;
        const auto& [a, b, c] = mesh.uvs[i];
        const double longest = std::max({length(b - a), length(c - b), length(a - c)});
        heights.push_back(longest > 0.0 ? std::abs(signedUvArea(mesh.uvs[i])) / longest * scale : 0.0);
    }
    if (heights.empty()) return "uv-fill";
    const auto median = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::nth_element(heights.begin(), median, heights.end());
    if (*median < kMinEdgeHeight) return "uv-fill";
    return *median < kMinStrongHeight ? "uv-fine" : "uv";
}

std::string UvPainter::drawTriangles(const StretchScale* stretch) const {
    std::vector<TriangleCorners> triangles;
    std::vector<std::string> classes;
    const std::vector<std::string> stretches =
        stretch == nullptr ? std::vector<std::string>() : stretchClasses(mesh, *stretch);
    const char* plain = mesh.triangles.size() <= kMaxTriangles ? plainClass() : "uv-fill";
    for (std::size_t i = 0; i < mesh.uvs.size(); ++i) {
        if (!mesh.marks[i].hasUV) continue;
        triangles.push_back(cornersOf(i));
        const char* defect = defectClass(mesh.marks[i]);
        classes.push_back(!stretches.empty() ? stretches[i] : defect != nullptr ? defect : plain);
    }
    const Camera camera = Camera::plan();
    const PlotRaster raster(triangles, camera, kPlotCells);
    for (const Shape& shape :
         triangleAreas(triangles, camera, raster, [&](std::uint32_t i) { return classes[i]; }))
        drawArea(shape);
    return leftOutText(raster);
}

void UvPainter::drawArea(const Shape& shape) const {
    std::vector<std::vector<PagePoint>> holes;
    for (const auto& hole : shape.holes) holes.push_back(fromView(hole));
    svg.area(shape.styleClass, fromView(shape.points), holes);
}

void UvPainter::drawDots() const {
    for (const std::string styleClass : {kBadUvClass, kFlippedClass}) {
        for (const std::uint32_t i : dottedTriangles(mesh, styleClass)) {
            if (!mesh.marks[i].hasUV) continue;
            std::vector<PagePoint> points;
            for (const Point<double, 2>& uv : mesh.uvs[i]) points.push_back(toPage(nearSquare(uv)));
            svg.area(styleClass + kDotSuffix, points);
        }
    }
}

void UvPainter::drawOverlap() const {
    const PlotUvOverlap overlap(mesh.uvs, mesh.overlaps.triangles);
    const auto classAt = [&](int column, int row) {
        return std::string(overlap.isAt(column, row) ? kOverlapClass : "");
    };
    // In the view's plane, as the triangles.
    const auto toView = [](const ViewPoint& at) {
        return ViewPoint(at[0], -at[1]) / static_cast<double>(PlotUvOverlap::kCells);
    };
    for (const Shape& shape :
         regionAreas(buildClassRaster(PlotUvOverlap::kCells, PlotUvOverlap::kCells, classAt), toView))
        drawArea(shape);
}

void UvPainter::drawEdges() const {
    std::size_t count = 0;
    for (const PlotMeshData::Line& line : mesh.uvEdges) {
        std::vector<PagePoint> points;
        for (const Point<double, 3>& at : line) points.push_back(toPage(nearSquare({at[0], at[1]})));
        points = simplifyLine(points, kTolerance);
        count += points.size();
        if (count > kMaxLinePoints) return;
        svg.line("border", points);
    }
}

void UvPainter::drawRange() const {
    const std::string text = "UV from (" + shortNumber(range.min()[0], 1.0) + ", " +
                             shortNumber(range.min()[1], 1.0) + ") to (" + shortNumber(range.max()[0], 1.0) +
                             ", " + shortNumber(range.max()[1], 1.0) + ")";
    svg.text("note", {box.middle()[0], box.corner[1] + box.height - 12.0}, text, TextAnchor::Middle);
}

}  // namespace

void drawMeshUv(SvgWriter& svg, const Box& box, const PlotMeshData& mesh, const StretchScale* stretch) {
    const UvPainter painter(svg, box, mesh);
    painter.drawSquare();
    if (!mesh.hasUV()) {
        painter.drawNames();
        svg.text("fact", box.middle(), "the mesh has no UV", TextAnchor::Middle);
        return;
    }
    const std::string note = painter.drawTriangles(stretch);
    if (stretch == nullptr) {
        painter.drawOverlap();
        painter.drawDots();
    }
    painter.drawGrid();
    if (mesh.boundaries.size() <= kMaxBoundaries) painter.drawEdges();
    painter.drawNames();
    painter.drawRange();
    drawPanelNote(svg, box, note);
}

}  // namespace quarn
