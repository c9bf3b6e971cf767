// Boundary, grid, samples, calibration points, and the data for display.
#include <QuarnScreen/MeshScreen.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <QuarnScreen/Detail/Boundary/BoundaryWalk.h>
#include <QuarnScreen/Detail/Boundary/PointInPolygon.h>
#include <QuarnScreen/Detail/Boundary/PolylineClipper.h>
#include <QuarnScreen/Detail/Mesh/GridCache.h>
#include <QuarnScreen/Detail/Mesh/MeshBounds.h>

namespace {

constexpr int kSamplesPerLine = 30;
constexpr double kSampleStep = 0.034482758620689655;  // 1 / 29

constexpr Point<double, 3> kViewPoint(0.0, -5.0, 0.0);

// Minimum number of rows or columns for which the position nearest to the origin becomes a
// calibration point.
constexpr int kMinGridWithMiddle = 3;

using UVPolyline = quarn::detail::PolylineClipper::Polyline;

enum class GridLines { ConstantV, ConstantU };

// Returns the lines of constant v from top to bottom, or of constant u from left to right, clipped
// to the boundary.
std::vector<UVPolyline> clippedLines(const quarn::detail::PolylineClipper& clipper, int density,
                                     GridLines lines) {
    std::vector<UVPolyline> pieces;
    const double step = 1.0 / (static_cast<double>(density) - 1.0);
    UVPolyline line(kSamplesPerLine);
    for (int i = 0; i < density; ++i) {
        const double t = i * step;
        for (int j = 0; j < kSamplesPerLine; ++j) {
            const double s = j * kSampleStep;
            line[static_cast<std::size_t>(j)] =
                lines == GridLines::ConstantV ? Point<double, 2>(s, t) : Point<double, 2>(t, s);
        }
        clipper.clip(line, pieces);
    }
    return pieces;
}

template <class Visit>
void visitPositions(const std::vector<Triangle>& triangles, Visit visit) {
    for (const Triangle& triangle : triangles)
        for (const TriangleVertex& corner : triangle.vertices) visit(corner.position);
}

// Returns the step between selected points of a line of `count` points that selects about as many
// as the perimeter of the grid has.
std::size_t perimeterStep(std::size_t count, int columns, int rows) {
    const std::int64_t perimeter = (static_cast<std::int64_t>(rows) + columns) * 2 - 4;
    if (perimeter <= 0) return 1;
    return std::max<std::size_t>(count / static_cast<std::size_t>(perimeter), 1);
}

// Intended: after an entry is erased, the entry that takes its place is skipped.
void eraseRepeats(std::vector<Point<double, 3>>& points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        if (points[i] == points[i - 1]) points.erase(points.begin() + static_cast<std::ptrdiff_t>(i));
}

void appendNearestToOrigin(const std::vector<Triangle>& triangles, std::vector<Point<double, 3>>& points) {
    double smallest = std::numeric_limits<double>::max();
    const Point<double, 3>* nearest = nullptr;
    visitPositions(triangles, [&](const Point<double, 3>& position) {
        const double size = std::abs(position[0]) + std::abs(position[1]) + std::abs(position[2]);
        if (!(size < smallest)) return;
        smallest = size;
        nearest = &position;
    });
    if (nearest != nullptr) points.push_back(*nearest);
}

}  // namespace

bool MeshScreen::findBoundaryNew(const std::vector<Triangle>& triangles, Boundary& boundary) {
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    if (result.edgesLeft) {
        LOG4CXX_WARN(log, "Multiple boundaries are not currently supported and there are "
                              << std::to_string(*result.edgesLeft)
                              << " unprocessed edges remaining in screen mesh!");
    }
    return result.isSingleWithUV;
}

bool MeshScreen::checkParameterization(const std::vector<Triangle>& triangles) {
    return quarn::detail::hasVaryingUV(triangles);
}

bool MeshScreen::pointWithinBoundary(const std::vector<Point<double, 2>>& polygon, Point<double, 2> point) {
    return quarn::detail::pointWithinPolygon(polygon, point);
}

void MeshScreen::sampleBoundary(Polylines& out) const {
    if (boundary.points.empty()) return;
    if (out.empty()) out.emplace_back();
    out.front() = boundary.points;
}

void MeshScreen::sampleGrid(Polylines& grid, int density) const {
    grid = *gridCache->get(density, [&] { return calculateGrid(density); });
}

MeshScreen::Polylines MeshScreen::calculateGrid(int density) const {
    Polylines boundaryLines;
    sampleBoundary(boundaryLines);
    Polylines grid(1);
    std::vector<Point<double, 3>>& boundaryLoop = grid.front();
    for (const auto& line : boundaryLines) boundaryLoop.insert(boundaryLoop.end(), line.begin(), line.end());
    // Intended: a boundary that already repeats its first point gets it a third time.
    if (!boundaryLoop.empty()) boundaryLoop.push_back(boundaryLoop.front());

    UVPolyline boundaryUV;
    sampleBoundaryUV(boundaryUV);
    const quarn::detail::PolylineClipper clipper(std::move(boundaryUV));
    for (const GridLines lines : {GridLines::ConstantV, GridLines::ConstantU}) {
        for (const UVPolyline& piece : clippedLines(clipper, density, lines)) {
            std::vector<Point<double, 3>>& line = grid.emplace_back();
            for (const Point<double, 2>& uv : piece) {
                Point<double, 3> point;
                if (mapInto3D(uv, point, true)) line.push_back(point);
            }
        }
    }
    return grid;
}

void MeshScreen::sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                    GridSamples& samples, bool extrapolate) const {
    for (int i = 0; i < count; ++i) {
        const double u =
            (static_cast<double>(i) / (static_cast<double>(count) - 1.0)) * (uEnd - uStart) + uStart;
        Point<double, 3> point;
        if (mapInto3D(Point<double, 2>(u, v), point, extrapolate)) samples[Point<int, 2>(i, row)] = point;
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
    double largest = 0.0;
    visitPositions(triangles, [&](const Point<double, 3>& position) {
        const double angle = std::acos(dot(normalized(position - eye), heading));
        if (angle > largest) largest = angle;
    });
    return largest;
}
