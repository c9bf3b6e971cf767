#include "PlotViews.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

// Differences of nearness that count as equal, so that rounding does not decide the painting order.
constexpr double kNearnessStep = 1e-7;
// Offset of lines towards the camera, so that adjacent cells do not cover half of their width.
constexpr double kLineLift = 0.05;
// A position at most this far beyond a surface counts as on it.
constexpr double kOnSurface = 0.02;
// Offset from a position, so that no edge of a cell contains the tested point.
const ViewPoint kBeside(3e-4, 7e-4);
// Maximum area of a cell that is seen from its edge, in squared sizes of the surface.
constexpr double kMinArea = 1e-9;

const Point<double, 3> kTowardsLight = normalized(Point<double, 3>(-0.55, -0.65, 0.8));

// A shape and its place in the painting order.
struct Painted {
    Shape shape;
    std::int64_t nearness = 0;
};

std::int64_t rounded(double nearness) {
    return std::llround(nearness / kNearnessStep);
}

// Computes the area of a quadrilateral from its diagonals.
double areaOf(const std::vector<ViewPoint>& corners) {
    const ViewPoint a = corners[2] - corners[0];
    const ViewPoint b = corners[3] - corners[1];
    return std::abs(a[0] * b[1] - a[1] * b[0]) / 2;
}

class SurfacePainter {
public:
    SurfacePainter(const PlotSurface& drawnSurface, const Camera& viewCamera,
                   const StretchScale* cellStretch = nullptr)
        : surface(drawnSurface), camera(viewCamera), stretch(cellStretch) {}

    [[nodiscard]] std::vector<Shape> shapes();
    [[nodiscard]] bool hides(const Point<double, 3>& position);

private:
    using Position = Point<double, 3>;

    void addCells();
    void addCell(int column, int row);
    void addLine(const char* styleClass, int column, int row, int toColumn, int toRow);
    void addLinesAlongU();
    void addLinesAlongV();
    [[nodiscard]] std::optional<std::int64_t> nearnessOf(int column, int row) const;
    [[nodiscard]] std::string classOf(int column, int row, const std::array<Position, 4>& corners,
                                      const Position& middle) const;

    const PlotSurface& surface;
    const Camera& camera;
    const StretchScale* stretch;
    std::vector<Painted> painted;
};

std::vector<Shape> SurfacePainter::shapes() {
    addCells();
    addLinesAlongU();
    addLinesAlongV();
    std::stable_sort(painted.begin(), painted.end(),
                     [](const Painted& a, const Painted& b) { return a.nearness < b.nearness; });
    std::vector<Shape> result;
    for (Painted& item : painted) result.push_back(std::move(item.shape));
    return result;
}

bool SurfacePainter::hides(const Position& position) {
    addCells();
    const std::int64_t nearness = rounded(camera.nearness(position) + kOnSurface);
    const ViewPoint seen = camera.project(position) + kBeside;
    return std::any_of(painted.begin(), painted.end(), [&](const Painted& cell) {
        return cell.nearness > nearness && isInside(cell.shape.points, seen);
    });
}

void SurfacePainter::addCells() {
    for (int row = 0; row < surface.rows(); ++row)
        for (int column = 0; column < surface.columns(); ++column) addCell(column, row);
}

// Returns nothing if the cell is outside of the lattice or has a corner without a position.
std::optional<std::int64_t> SurfacePainter::nearnessOf(int column, int row) const {
    if (column < 0 || row < 0 || column >= surface.columns() || row >= surface.rows()) return std::nullopt;
    double sum = 0.0;
    for (const auto& [c, r] : {std::pair(column, row), std::pair(column + 1, row), std::pair(column, row + 1),
                               std::pair(column + 1, row + 1)}) {
        const auto position = surface.at(c, r);
        if (!position) return std::nullopt;
        sum += camera.nearness(*position);
    }
    return rounded(sum / 4);
}

void SurfacePainter::addCell(int column, int row) {
    const auto nearness = nearnessOf(column, row);
    if (!nearness) return;
    const std::array<Position, 4> corners = {*surface.at(column, row), *surface.at(column + 1, row),
                                             *surface.at(column + 1, row + 1), *surface.at(column, row + 1)};
    const Position middle = (corners[0] + corners[1] + corners[2] + corners[3]) * 0.25;
    Painted item{.shape = {.styleClass = classOf(column, row, corners, middle), .isArea = true},
                 .nearness = *nearness};
    item.shape.points.resize(corners.size());
    if (!camera.projectShape(corners, item.shape.points)) return;
    if (areaOf(item.shape.points) > kMinArea) painted.push_back(std::move(item));
}

std::string SurfacePainter::classOf(int column, int row, const std::array<Position, 4>& corners,
                                    const Position& middle) const {
    if (stretch != nullptr)
        if (const auto patch = surface.patch(column, row)) return stretch->classOf(*patch);
    // The cross product of the diagonals is a normal even if two corners coincide.
    return shadeClass(camera, middle, normalized(cross(corners[3] - corners[1], corners[2] - corners[0])));
}

// Paints a line directly after the nearer one of its two cells.
void SurfacePainter::addLine(const char* styleClass, int column, int row, int toColumn, int toRow) {
    const auto from = surface.at(column, row);
    const auto to = surface.at(toColumn, toRow);
    if (!from || !to) return;
    const bool isAlongU = row == toRow;
    int previousColumn = isAlongU ? column : column - 1;
    if (previousColumn < 0 && surface.closesAlongU()) previousColumn = surface.columns() - 1;
    const auto before = nearnessOf(previousColumn, isAlongU ? row - 1 : row);
    const auto after = nearnessOf(column, row);
    const std::int64_t own = rounded((camera.nearness(*from) + camera.nearness(*to)) / 2);
    const std::int64_t nearness =
        before || after ? std::max(before.value_or(after.value_or(own)), after.value_or(before.value_or(own)))
                        : own;
    Painted item{.shape = {.styleClass = styleClass, .points = std::vector<ViewPoint>(2)},
                 .nearness = nearness + rounded(kLineLift)};
    if (camera.projectShape(std::array{*from, *to}, item.shape.points)) painted.push_back(std::move(item));
}

// The boundary consists of the edges of the unit square. IScreenGeometry::sampleBoundary() may have
// too few positions for a picture, such as five for a narrow ring, and it does not distinguish
// seams.
void SurfacePainter::addLinesAlongU() {
    const int step = surface.rows() / kGridIntervals;
    for (int row = 0; row <= surface.rows(); row += step) {
        if (row == 0 && surface.isPoint(PlotSurface::Top)) continue;
        if (row == surface.rows() && surface.isPoint(PlotSurface::Bottom)) continue;
        const char* styleClass = row == 0 || row == surface.rows() ? kBoundaryClass : kGridClass;
        for (int column = 0; column < surface.columns(); ++column)
            addLine(styleClass, column, row, column + 1, row);
    }
}

void SurfacePainter::addLinesAlongV() {
    const int step = surface.columns() / kGridIntervals;
    const int last = surface.closesAlongU() ? surface.columns() - step : surface.columns();
    for (int column = 0; column <= last; column += step) {
        if (column == 0 && surface.isPoint(PlotSurface::Left)) continue;
        if (column == surface.columns() && surface.isPoint(PlotSurface::Right)) continue;
        const bool isEdge = column == 0 || column == surface.columns();
        const char* edgeClass = surface.closesAlongU() ? kSeamClass : kBoundaryClass;
        for (int row = 0; row < surface.rows(); ++row)
            addLine(isEdge ? edgeClass : kGridClass, column, row, column, row + 1);
    }
}

}  // namespace

std::string shadeClass(const Camera& camera, const Point<double, 3>& position,
                       const Point<double, 3>& normal) {
    if (!isFinite(normal)) return kFrontClass + std::to_string(0);
    const bool isFront = camera.sees(position, normal);
    const Point<double, 3> seen = isFront ? normal : normal * -1.0;
    const double light = 0.5 + 0.5 * dot(seen, kTowardsLight);
    const auto shade = std::llround(std::floor(light * kShades + kNearnessStep));
    return (isFront ? kFrontClass : kBackClass) + std::to_string(std::clamp(shade, 0LL, kShades - 1LL));
}

std::vector<Shape> surfaceShapes(const PlotSurface& surface, const Camera& camera,
                                 const StretchScale* stretch) {
    return SurfacePainter(surface, camera, stretch).shapes();
}

bool hides(const PlotSurface& surface, const Camera& camera, const Point<double, 3>& position) {
    return SurfacePainter(surface, camera).hides(position);
}

bool isInside(const std::vector<Point<double, 2>>& polygon, const Point<double, 2>& point) {
    // Count the sides to the right of the point.
    bool isOdd = false;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point<double, 2>& a = polygon[i];
        const Point<double, 2>& b = polygon[(i + 1) % polygon.size()];
        if ((a[1] > point[1]) == (b[1] > point[1])) continue;
        const double crossing = a[0] + (b[0] - a[0]) * ((point[1] - a[1]) / (b[1] - a[1]));
        if (crossing > point[0]) isOdd = !isOdd;
    }
    return isOdd;
}

}  // namespace quarn
