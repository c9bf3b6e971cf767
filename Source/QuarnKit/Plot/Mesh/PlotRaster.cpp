#include "PlotRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include <QuarnKit/Base/Bounds.h>

#include "TriangleCells.h"

namespace quarn {

namespace {

constexpr std::uint32_t kNothing = std::numeric_limits<std::uint32_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
// A surface at most this far before a position, in sizes of the surface, counts as containing it.
constexpr double kOnSurface = 0.006;
// Barycentric tolerance for the center of a cell outside of a triangle, so that adjacent triangles
// leave no gap.
constexpr double kEdgeSlack = 1e-9;

// Cells of one row with the same class.
struct Run {
    int from;
    int to;
    int firstRow;
    std::string styleClass;
};

}  // namespace

PlotRaster::PlotRaster(const std::vector<TriangleCorners>& triangles, const Camera& viewCamera, int cells)
    : camera(viewCamera) {
    Bounds<2> bounds;
    for (const TriangleCorners& triangle : triangles)
        for (const Point<double, 3>& corner : triangle) bounds.include(camera.project(corner));
    lowest = bounds.min;
    const ViewPoint extent = bounds.extent();
    cell = std::max(extent[0], extent[1]) / cells;
    if (!(cell > 0.0)) return;
    columnCount = static_cast<int>(std::ceil(extent[0] / cell)) + 1;
    rowCount = static_cast<int>(std::ceil(extent[1] / cell)) + 1;
    nearest.assign(indexOf(0, rowCount), kNothing);
    depths.assign(nearest.size(), -kInfinity);
    for (std::uint32_t i = 0; i < triangles.size(); ++i) draw(triangles[i], i);
}

void PlotRaster::draw(const TriangleCorners& triangle, std::uint32_t number) {
    std::array<ViewPoint, 3> at;
    std::array<double, 3> depth{};
    for (std::size_t i = 0; i < 3; ++i) {
        at.at(i) = (camera.project(triangle.at(i)) - lowest) / cell - ViewPoint(0.5, 0.5);
        depth.at(i) = camera.depth(triangle.at(i));
    }
    visitCells(at, columnCount, rowCount, [&](int column, int row, double a, double b, double c) {
        if (a < -kEdgeSlack || b < -kEdgeSlack || c < -kEdgeSlack) return;
        const double here = a * depth[0] + b * depth[1] + c * depth[2];
        const std::size_t index = indexOf(column, row);
        if (!(here > depths[index])) return;
        depths[index] = here;
        nearest[index] = number;
    });
}

std::optional<std::uint32_t> PlotRaster::triangleAt(int column, int row) const {
    const std::uint32_t number = nearest[indexOf(column, row)];
    if (number == kNothing) return std::nullopt;
    return number;
}

bool PlotRaster::hides(const Point<double, 3>& position) const {
    if (nearest.empty()) return false;
    const ViewPoint at = (camera.project(position) - lowest) / cell;
    const double limit = camera.depth(position) + kOnSurface;
    const int column = static_cast<int>(std::clamp(std::floor(at[0]), -9.0, columnCount + 9.0));
    const int row = static_cast<int>(std::clamp(std::floor(at[1]), -9.0, rowCount + 9.0));
    // All cells around have to be nearer. A surface at a steep angle is nearer in some of them
    // only.
    for (int y = row - 1; y <= row + 1; ++y)
        for (int x = column - 1; x <= column + 1; ++x) {
            if (x < 0 || y < 0 || x >= columnCount || y >= rowCount) return false;
            if (depths[indexOf(x, y)] <= limit) return false;
        }
    return true;
}

std::vector<Shape> cellAreas(int columns, int rows, const std::function<std::string(int, int)>& classOf,
                             const std::function<ViewPoint(int, int)>& cornerAt) {
    std::map<std::string, std::vector<Shape>> areas;
    const auto close = [&](const Run& run, int row) {
        areas[run.styleClass].push_back(
            {.styleClass = run.styleClass,
             .points = {cornerAt(run.from, run.firstRow), cornerAt(run.to, run.firstRow),
                        cornerAt(run.to, row), cornerAt(run.from, row)},
             .isArea = true});
    };
    std::vector<Run> open;
    for (int row = 0; row <= rows; ++row) {
        std::vector<Run> runs;
        for (int column = 0; column < columns && row < rows; ++column) {
            std::string styleClass = classOf(column, row);
            if (!runs.empty() && runs.back().to == column && runs.back().styleClass == styleClass)
                ++runs.back().to;
            else if (!styleClass.empty())
                runs.push_back({column, column + 1, row, std::move(styleClass)});
        }
        for (const Run& run : open) {
            const auto same =
                std::lower_bound(runs.begin(), runs.end(), run,
                                 [](const Run& next, const Run& wanted) { return next.from < wanted.from; });
            if (same != runs.end() && same->from == run.from && same->to == run.to &&
                same->styleClass == run.styleClass)
                same->firstRow = run.firstRow;
            else
                close(run, row);
        }
        open = std::move(runs);
    }
    std::vector<Shape> result;
    for (auto& [styleClass, shapes] : areas)
        for (Shape& shape : shapes) result.push_back(std::move(shape));
    return result;
}

}  // namespace quarn
