#include "PlotMeshViews.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "PlotLines.h"
#include "PlotRegions.h"
#include "ViewTriangles.h"

namespace quarn {

namespace {

// Differences of nearness that count as equal, so that rounding does not decide the painting order.
constexpr double kNearnessStep = 1e-7;
// Maximum of twice the area of a triangle that is seen from its edge, in squared sizes of the
// surface.
constexpr double kMinArea = 1e-9;
// Maximum number of corners of the areas of a view, for a reasonable size in bytes.
constexpr std::size_t kMaxAreaPoints = 20000;
// Maximum number of marked triangles that are drawn one by one if the others are rounded to cells.
constexpr std::size_t kMaxDots = 500;

enum class HiddenLines { Shown, LeftOut };

Point<double, 3> middleOf(const TriangleCorners& triangle) {
    return (triangle[0] + triangle[1] + triangle[2]) / 3.0;
}

// Returns nothing if the view cannot show the triangle.
std::optional<Shape> areaOf(const TriangleCorners& triangle, const Camera& camera, std::string styleClass) {
    Shape shape{.styleClass = std::move(styleClass), .points = std::vector<ViewPoint>(3), .isArea = true};
    if (!camera.projectShape(triangle, shape.points)) return std::nullopt;
    return shape;
}

std::size_t pointCount(const std::vector<Shape>& shapes) {
    std::size_t count = 0;
    for (const Shape& shape : shapes) {
        count += shape.points.size();
        for (const auto& hole : shape.holes) count += hole.size();
    }
    return count;
}

std::vector<Shape> paintTriangles(const std::vector<TriangleCorners>& triangles, const Camera& camera,
                                  const std::function<std::string(std::uint32_t)>& classOf) {
    std::vector<std::pair<std::int64_t, std::uint32_t>> order;
    for (std::uint32_t i = 0; i < triangles.size(); ++i)
        order.emplace_back(std::llround(camera.nearness(middleOf(triangles[i])) / kNearnessStep), i);
    std::sort(order.begin(), order.end());
    std::vector<Shape> shapes;
    for (const auto& [nearness, i] : order) {
        std::optional<Shape> shape = areaOf(triangles[i], camera, classOf(i));
        if (!shape) continue;
        const ViewPoint a = shape->points[1] - shape->points[0];
        const ViewPoint b = shape->points[2] - shape->points[0];
        if (std::abs(a[0] * b[1] - a[1] * b[0]) > kMinArea) shapes.push_back(std::move(*shape));
    }
    return shapes;
}

class MeshPainter {
public:
    MeshPainter(const PlotMeshData& drawnMesh, const Camera& viewCamera, const StretchScale* triangleStretch)
        : mesh(drawnMesh),
          camera(viewCamera),
          triangles(mesh.triangles, camera),
          raster(triangles.pieces(), camera, kPlotCells) {
        if (triangleStretch != nullptr) classes = stretchClasses(mesh, *triangleStretch);
    }

    SceneView view(const std::optional<Point<double, 3>>& eye);

private:
    [[nodiscard]] std::string classOf(std::uint32_t triangle) const;
    void addDots();
    void addLines(const std::vector<PlotMeshData::Line>& lines, const std::string& styleClass,
                  HiddenLines hiddenLines);
    [[nodiscard]] std::string note() const;

    const PlotMeshData& mesh;
    const Camera& camera;
    ViewTriangles triangles;
    PlotRaster raster;
    std::vector<std::string> classes;  // by triangle, of the stretch; empty if colors show sides
    std::vector<Shape> painted;
    bool isLineLeftOut = false;  // since a limit was reached
};

SceneView MeshPainter::view(const std::optional<Point<double, 3>>& eye) {
    painted = triangleAreas(triangles.pieces(), camera, raster,
                            [this](std::uint32_t piece) { return classOf(triangles.sourceOf(piece)); });
    if (classes.empty()) addDots();
    addLines(mesh.grid, kGridClass, HiddenLines::LeftOut);
    addLines(mesh.seams, kSeamClass, HiddenLines::LeftOut);
    const bool hasFewBoundaries = mesh.boundaries.size() <= kMaxThickBoundaries;
    if (mesh.boundaries.size() <= kMaxBoundaries)
        addLines(mesh.boundaries, hasFewBoundaries ? kBoundaryClass : kThinClass,
                 hasFewBoundaries ? HiddenLines::Shown : HiddenLines::LeftOut);
    addLines(mesh.holes, kHoleClass, HiddenLines::Shown);
    return {.shapes = std::move(painted), .isEyeHidden = eye && raster.hides(*eye), .note = note()};
}

std::string MeshPainter::note() const {
    std::string text = leftOutText(raster);
    if (!text.empty() || !isLineLeftOut) return text;
    return "too many lines: some left out";
}

std::string MeshPainter::classOf(std::uint32_t triangle) const {
    if (!classes.empty()) return classes[triangle];
    if (const char* defect = defectClass(mesh.marks[triangle])) return defect;
    const TriangleCorners& corners = mesh.triangles[triangle];
    const Point<double, 3> normal = normalized(cross(corners[1] - corners[0], corners[2] - corners[0]));
    return shadeClass(camera, middleOf(corners), normal);
}

void MeshPainter::addDots() {
    for (const std::string styleClass : {kBadUvClass, kFlippedClass})
        for (const std::uint32_t i : dottedTriangles(mesh, styleClass)) {
            if (raster.hides(middleOf(mesh.triangles[i]))) continue;
            if (auto dot = areaOf(mesh.triangles[i], camera, styleClass + kDotSuffix))
                painted.push_back(std::move(*dot));
        }
}

void MeshPainter::addLines(const std::vector<PlotMeshData::Line>& lines, const std::string& styleClass,
                           HiddenLines hiddenLines) {
    std::size_t count = 0;
    SampleBudget budget;
    for (const PlotMeshData::Line& line : lines) {
        for (const LinePart& part : visibleParts(line, camera, raster, budget)) {
            if (part.isHidden && hiddenLines == HiddenLines::LeftOut) continue;
            count += part.points.size();
            isLineLeftOut = isLineLeftOut || count > kMaxLinePoints;
            if (count > kMaxLinePoints) return;
            painted.push_back(
                {.styleClass = styleClass + (part.isHidden ? kHiddenSuffix : ""), .points = part.points});
        }
        isLineLeftOut = isLineLeftOut || budget.left == 0;
        if (budget.left == 0) return;
    }
}

}  // namespace

std::vector<Shape> triangleAreas(const std::vector<TriangleCorners>& triangles, const Camera& camera,
                                 const PlotRaster& raster,
                                 const std::function<std::string(std::uint32_t)>& classOf) {
    if (triangles.size() <= kMaxTriangles) return paintTriangles(triangles, camera, classOf);
    // If the shades change from cell to cell, draw larger cells.
    for (int step = 1;; ++step) {
        const auto cellClass = [&](int column, int row) {
            const auto triangle = raster.triangleAt(column * step, row * step);
            return triangle ? classOf(*triangle) : std::string();
        };
        const ClassRaster cells =
            buildClassRaster((raster.columns() - 1) / step + 1, (raster.rows() - 1) / step + 1, cellClass);
        std::vector<Shape> areas =
            regionAreas(cells, [&](const ViewPoint& at) { return raster.at(at * step); });
        if (pointCount(areas) <= kMaxAreaPoints) return areas;
    }
}

std::string leftOutText(const PlotRaster& raster) {
    const std::size_t count = raster.leftOutCount();
    return count == 0 ? "" : "too many overlaps: " + std::to_string(count) + " triangles left out";
}

const char* defectClass(const TriangleMark& mark) {
    if (mark.isFlipped) return kFlippedClass;
    return mark.hasBadUV() ? kBadUvClass : nullptr;
}

std::vector<std::uint32_t> dottedTriangles(const PlotMeshData& mesh, const std::string& styleClass) {
    std::vector<std::uint32_t> dotted;
    if (mesh.triangles.size() <= kMaxTriangles) return dotted;
    for (std::uint32_t i = 0; i < mesh.marks.size(); ++i) {
        const char* defect = defectClass(mesh.marks[i]);
        if (defect == nullptr || defect != styleClass) continue;
        if (dotted.size() == kMaxDots) return {};
        dotted.push_back(i);
    }
    return dotted;
}

SceneView meshView(const PlotMeshData& mesh, const Camera& camera, const std::optional<Point<double, 3>>& eye,
                   const StretchScale* stretch) {
    return MeshPainter(mesh, camera, stretch).view(eye);
}

std::vector<std::string> stretchClasses(const PlotMeshData& mesh, const StretchScale& stretch) {
    std::vector<std::string> classes;
    for (const StretchPatch& patch : mesh.patches()) classes.push_back(stretch.classOf(patch));
    return classes;
}

}  // namespace quarn
