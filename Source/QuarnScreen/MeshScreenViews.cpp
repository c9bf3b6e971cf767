// What a caller shows or derives of a mesh.
#include <QuarnScreen/MeshScreen.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <QuarnScreen/Detail/Editing/Crease.h>
#include <QuarnScreen/Detail/Mesh/MeshIndexes.h>

namespace {

constexpr Point<double, 3> kViewPoint(0.0, -5.0, 0.0);

// From this number of rows or columns on, the position nearest to the origin is a calibration point of its own.
constexpr int kMinGridWithMiddle = 3;

// Snapping to a crease: the triangles that are looked at, the size of a mesh for each of them, and the greatest
// distance, in the mesh's unit.
constexpr int kMaxCreaseLevels = 5;
constexpr std::size_t kTrianglesPerCreaseLevel = 100;
constexpr double kSnapDistance = 0.5;

template <class Visit>
void visitPositions(const std::vector<Triangle>& triangles, Visit visit) {
    for (const Triangle& triangle : triangles)
        for (const TriangleVertex& corner : triangle.vertices) visit(corner.position);
}

// How many points of a line of `count` lie between two that are taken, to get about as many as a grid's perimeter has.
std::size_t perimeterStep(std::size_t count, int columns, int rows) {
    const std::int64_t perimeter = (static_cast<std::int64_t>(rows) + columns) * 2 - 4;
    if (perimeter <= 0) return 1;
    return std::max<std::size_t>(count / static_cast<std::size_t>(perimeter), 1);
}

// Intended: after an entry went, the one that moved into its place is not looked at.
void eraseRepeats(std::vector<Point<double, 3>>& points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        if (points[i] == points[i - 1]) points.erase(points.begin() + static_cast<std::ptrdiff_t>(i));
}

void appendNearestToOrigin(const std::vector<Triangle>& triangles, std::vector<Point<double, 3>>& points) {
    double least = std::numeric_limits<double>::max();
    const Point<double, 3>* nearest = nullptr;
    visitPositions(triangles, [&](const Point<double, 3>& position) {
        const double size = std::abs(position[0]) + std::abs(position[1]) + std::abs(position[2]);
        if (!(size < least)) return;
        least = size;
        nearest = &position;
    });
    if (nearest != nullptr) points.push_back(*nearest);
}

}  // namespace

void MeshScreen::generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                                  std::vector<Point<double, 3>>& vertices,
                                  std::vector<Point<double, 3>>& normals) const {
    viewPoint = kViewPoint;
    const std::size_t corners = 3 * triangles.size();
    indices.reserve(corners);
    vertices.reserve(corners);
    normals.reserve(corners);
    int running = 0;
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            vertices.push_back(corner.position);
            normals.push_back(corner.normal);
            indices.push_back(running++);
        }
    }
}

std::vector<Point<double, 3>> MeshScreen::getDefaultCalibrationPoints(int columns, int rows) const {
    return hasParameterization() ? calibrationPointsByUV(columns, rows)
                                 : calibrationPointsOfRim(columns, rows);
}

std::vector<Point<double, 3>> MeshScreen::calibrationPointsByUV(int columns, int rows) const {
    std::vector<Point<double, 3>> points;
    const double step = 1.0 / (static_cast<double>(rows) - 1.0);
    for (int r = 0; r < rows; ++r) {
        GridSamples samples;
        sampleHorizontally(r * step, 0.0, 1.0, columns, 1, samples, false);
        for (const auto& [key, point] : samples) points.push_back(point);
    }
    return points;
}

std::vector<Point<double, 3>> MeshScreen::calibrationPointsOfRim(int columns, int rows) const {
    Polylines lines;
    sampleBoundary(lines);
    std::vector<Point<double, 3>> points;
    if (lines.empty()) return points;
    for (const auto& line : lines) {
        const std::size_t step = perimeterStep(line.size(), columns, rows);
        for (std::size_t i = 0; i < line.size(); ++i)
            if (i % step == 0 || i + 1 == line.size()) points.push_back(line[i]);
    }
    eraseRepeats(points);
    if (columns >= kMinGridWithMiddle || rows >= kMinGridWithMiddle) appendNearestToOrigin(triangles, points);
    return points;
}

Point<double, 3> MeshScreen::getCenterOfScreenHeading() const {
    const Point<double, 3> eye = getEyepoint();
    Point<double, 3> sum;
    visitPositions(triangles,
                   [&](const Point<double, 3>& position) { sum = sum + normalized(position - eye); });
    return normalized(sum);
}

double MeshScreen::getMaxAngleFromHeading() const {
    const Point<double, 3> eye = getEyepoint();
    const Point<double, 3> heading = normalized(getCenterOfScreenHeading());
    double greatest = 0.0;
    visitPositions(triangles, [&](const Point<double, 3>& position) {
        const double angle = std::acos(dot(normalized(position - eye), heading));
        if (angle > greatest) greatest = angle;
    });
    return greatest;
}

Point<double, 3> MeshScreen::getPointOnMeshEdge(const Point<double, 3>& point) const {
    const int levels = std::min(index->uvTree.depth(), kMaxCreaseLevels);
    if (triangles.size() < static_cast<std::size_t>(levels) * kTrianglesPerCreaseLevel) return point;
    const auto nearest = index->centroidSearch.tree().findKNearest(point, 2 * levels);
    const Point<double, 3> candidate =
        quarn::detail::closestOn(quarn::detail::sharpestCrease(nearest), point);
    return length(point - candidate) < kSnapDistance ? candidate : point;
}

void MeshScreen::sampleBoundary(Polylines& out) const {
    if (boundary.points.empty()) return;
    if (out.empty()) out.emplace_back();
    out.front() = boundary.points;
}
