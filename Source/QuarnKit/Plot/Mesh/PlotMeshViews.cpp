#include "PlotMeshViews.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "PlotLines.h"

namespace quarn {

namespace {

// Differences of nearness that count as equal, so that rounding does not decide the painting order.
constexpr double kNearnessStep = 1e-7;
// Maximum of twice the area of a triangle that is seen from its edge, in squared sizes of the
// surface.
constexpr double kMinArea = 1e-9;
// Maximum number of areas of a view, for a reasonable size in bytes.
constexpr std::size_t kMaxAreas = 6000;
// Maximum number of marked triangles that are drawn one by one if the others are rounded to cells.
constexpr std::size_t kMaxDots = 500;

Point<double, 3> middleOf(const TriangleCorners& triangle) {
    return (triangle[0] + triangle[1] + triangle[2]) / 3.0;
}

Shape areaOf(const TriangleCorners& triangle, const Camera& camera, std::string styleClass) {
    Shape shape{.styleClass = std::move(styleClass), .isArea = true};
    for (const Point<double, 3>& corner : triangle) shape.points.push_back(camera.project(corner));
    return shape;
}

std::vector<Shape> paintTriangles(const std::vector<TriangleCorners>& triangles, const Camera& camera,
                                  const std::function<std::string(std::uint32_t)>& classOf) {
    std::vector<std::pair<std::int64_t, std::uint32_t>> order;
    for (std::uint32_t i = 0; i < triangles.size(); ++i)
        order.emplace_back(std::llround(camera.nearness(middleOf(triangles[i])) / kNearnessStep), i);
    std::sort(order.begin(), order.end());
    std::vector<Shape> shapes;
    for (const auto& [nearness, i] : order) {
        Shape shape = areaOf(triangles[i], camera, classOf(i));
        const ViewPoint a = shape.points[1] - shape.points[0];
        const ViewPoint b = shape.points[2] - shape.points[0];
        if (std::abs(a[0] * b[1] - a[1] * b[0]) > kMinArea) shapes.push_back(std::move(shape));
    }
    return shapes;
}

class MeshPainter {
public:
    MeshPainter(const PlotMeshData& drawnMesh, const Camera& viewCamera, const StretchScale* triangleStretch)
        : mesh(drawnMesh), camera(viewCamera), raster(mesh.triangles, camera, kPlotCells) {
        if (triangleStretch != nullptr) classes = stretchClasses(mesh, *triangleStretch);
    }

    std::vector<Shape> shapes();

private:
    [[nodiscard]] std::string classOf(std::uint32_t triangle) const;
    void addDots();
    void addLines(const std::vector<PlotMeshData::Line>& lines, const std::string& styleClass,
                  bool isShownIfHidden);

    const PlotMeshData& mesh;
    const Camera& camera;
    PlotRaster raster;
    std::vector<std::string> classes;  // by triangle, of the stretch; empty if colors show sides
    std::vector<Shape> painted;
};

std::vector<Shape> MeshPainter::shapes() {
    painted = triangleAreas(mesh.triangles, camera, raster, [this](std::uint32_t i) { return classOf(i); });
    if (classes.empty()) addDots();
    addLines(mesh.grid, kGridClass, false);
    addLines(mesh.seams, kSeamClass, false);
    if (mesh.boundaries.size() <= kMaxBoundaries)
        addLines(mesh.boundaries, mesh.boundaries.size() <= kMaxThickBoundaries ? kBoundaryClass : kThinClass,
                 mesh.boundaries.size() <= kMaxThickBoundaries);
    addLines(mesh.holes, kHoleClass, true);
    return std::move(painted);
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
        for (const std::uint32_t i : dottedTriangles(mesh, styleClass))
            if (!raster.hides(middleOf(mesh.triangles[i])))
                painted.push_back(areaOf(mesh.triangles[i], camera, styleClass + kDotSuffix));
}

void MeshPainter::addLines(const std::vector<PlotMeshData::Line>& lines, const std::string& styleClass,
                           bool isShownIfHidden) {
    std::size_t count = 0;
    for (const PlotMeshData::Line& line : lines) {
        for (const LinePart& part : visibleParts(line, camera, raster)) {
            if (part.isHidden && !isShownIfHidden) continue;
            count += part.points.size();
            if (count > kMaxLinePoints) return;
            painted.push_back(
                {.styleClass = styleClass + (part.isHidden ? kHiddenSuffix : ""), .points = part.points});
        }
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
        std::vector<Shape> areas =
            cellAreas((raster.columns() - 1) / step + 1, (raster.rows() - 1) / step + 1, cellClass,
                      [&](int column, int row) { return raster.cornerAt(column * step, row * step); });
        if (areas.size() <= kMaxAreas) return areas;
    }
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

std::vector<Shape> meshShapes(const PlotMeshData& mesh, const Camera& camera, const StretchScale* stretch) {
    return MeshPainter(mesh, camera, stretch).shapes();
}

std::vector<std::string> stretchClasses(const PlotMeshData& mesh, const StretchScale& stretch) {
    std::vector<std::string> classes;
    for (const StretchPatch& patch : mesh.patches()) classes.push_back(stretch.classOf(patch));
    return classes;
}

}  // namespace quarn
