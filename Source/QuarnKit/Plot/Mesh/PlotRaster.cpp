#include "PlotRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include <QuarnKit/Base/Bounds.h>

namespace quarn {

namespace {

constexpr std::uint32_t kNothing = std::numeric_limits<std::uint32_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
// A surface at most this far before a position, in sizes of the surface, counts as containing it.
constexpr double kOnSurface = 0.006;
// Barycentric tolerance for the center of a cell outside of a triangle, so that adjacent triangles
// leave no gap.
constexpr double kEdgeSlack = 1e-9;
// Differences of depth that count as equal, so that rounding does not decide what is drawn.
constexpr double kDepthStep = 1e-7;
// Cells along a side of a tile.
constexpr int kTileSize = 16;
// The depth of a tile is computed again after this many visits of its cells, which take as long.
constexpr std::uint32_t kVisitsPerUpdate = kTileSize * kTileSize;
// Maximum number of visited cells and tiles, about a second: a view whose triangles are in a
// hundred layers takes fewer.
constexpr std::uint64_t kMaxVisits = 100'000'000;
constexpr std::uint64_t kMaxVisitsPerTriangle = 20;

}  // namespace

PlotRaster::PlotRaster(const std::vector<TriangleCorners>& triangles, const Camera& viewCamera, int cells)
    : camera(viewCamera) {
    Bounds<2> bounds;
    for (const TriangleCorners& triangle : triangles)
        if (const auto seen = project(triangle))
            for (const ViewPoint& corner : *seen) bounds.include(corner);
    if (bounds.isEmpty()) return;
    lowest = bounds.min;
    const ViewPoint extent = bounds.extent();
    cell = std::max(extent[0], extent[1]) / cells;
    if (!(cell > 0.0)) return;
    columnCount = std::max(static_cast<int>(std::ceil(extent[0] / cell)), 1);
    rowCount = std::max(static_cast<int>(std::ceil(extent[1] / cell)), 1);
    nearest.assign(indexOf(0, rowCount), kNothing);
    depths.assign(nearest.size(), -kInfinity);
    tileColumns = (columnCount - 1) / kTileSize + 1;
    tiles.resize(tileOf(0, (rowCount - 1) / kTileSize + 1));
    drawAll(triangles);
}

std::optional<PlotRaster::Corners> PlotRaster::project(const TriangleCorners& triangle) const {
    Corners seen;
    if (!camera.projectShape(triangle, seen)) return std::nullopt;
    return seen;
}

PlotRaster::Corners PlotRaster::inCells(const Corners& seen) const {
    Corners at;
    for (std::size_t i = 0; i < 3; ++i) at.at(i) = (seen.at(i) - lowest) / cell - ViewPoint(0.5, 0.5);
    return at;
}

// Returns an upper bound of the cells to visit.
double PlotRaster::maxVisits(const std::vector<TriangleCorners>& triangles) const {
    double sum = 0.0;
    for (const TriangleCorners& triangle : triangles) {
        const auto seen = project(triangle);
        if (!seen) continue;
        const Corners at = inCells(*seen);
        const TriangleCells cells(at, columnCount, rowCount);
        const CellRange rows = cells.rows();
        const CellRange columns = cells.allColumns();
        sum +=
            std::max(0.0, rows.last - rows.first + 1.0) * std::max(0.0, columns.last - columns.first + 1.0);
    }
    return sum;
}

void PlotRaster::drawAll(const std::vector<TriangleCorners>& triangles) {
    const std::uint64_t limit = kMaxVisits + kMaxVisitsPerTriangle * triangles.size();
    std::vector<std::uint32_t> order(triangles.size());
    std::iota(order.begin(), order.end(), 0U);
    // The nearest ones first hide most of the others.
    if (maxVisits(triangles) > static_cast<double>(limit)) {
        std::vector<std::int64_t> nearness;
        nearness.reserve(triangles.size());
        for (const auto& [a, b, c] : triangles)
            nearness.push_back(std::llround(
                std::max({camera.nearness(a), camera.nearness(b), camera.nearness(c)}) / kDepthStep));
        std::stable_sort(order.begin(), order.end(),
                         [&](std::uint32_t a, std::uint32_t b) { return nearness[a] > nearness[b]; });
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (visits > limit) {
            leftOut = order.size() - i;
            return;
        }
        draw(triangles[order[i]], order[i]);
    }
}

void PlotRaster::draw(const TriangleCorners& triangle, std::uint32_t number) {
    const auto seen = project(triangle);
    if (!seen) return;
    const Corners at = inCells(*seen);
    const std::array<double, 3> depth = {camera.depth(triangle[0]), camera.depth(triangle[1]),
                                         camera.depth(triangle[2])};
    const double maxDepth = std::max({depth[0], depth[1], depth[2]});
    if (maxDepth <= whole.depth) return;
    const TriangleCells cells(at, columnCount, rowCount);
    const CellRange columns = cells.allColumns();
    const CellRange rows = cells.rows();
    if (rows.last < rows.first || columns.last < columns.first) return;
    for (int tileRow = rows.first / kTileSize; tileRow <= rows.last / kTileSize; ++tileRow)
        for (int tileColumn = columns.first / kTileSize; tileColumn <= columns.last / kTileSize;
             ++tileColumn) {
            ++whole.visits;
            if (maxDepth > tiles[tileOf(tileColumn, tileRow)].depth)
                drawTile(cells, depth, number, tileColumn, tileRow);
            if (whole.visits >= tiles.size()) updateDepth();
        }
}

void PlotRaster::drawTile(const TriangleCells& cells, const std::array<double, 3>& depth,
                          std::uint32_t number, int tileColumn, int tileRow) {
    Tile& tile = tiles[tileOf(tileColumn, tileRow)];
    const CellRange rows = cells.rows();
    const int lastRow = std::min(rows.last, tileRow * kTileSize + kTileSize - 1);
    for (int row = std::max(rows.first, tileRow * kTileSize); row <= lastRow; ++row) {
        const CellRange columns = cells.columnsOf(row);
        const int last = std::min(columns.last, tileColumn * kTileSize + kTileSize - 1);
        for (int column = std::max(columns.first, tileColumn * kTileSize); column <= last; ++column) {
            ++tile.visits;
            const auto [a, b, c] = cells.barycentric(column, row);
            if (a < -kEdgeSlack || b < -kEdgeSlack || c < -kEdgeSlack) continue;
            const double here = a * depth[0] + b * depth[1] + c * depth[2];
            const std::size_t index = indexOf(column, row);
            if (!(here > depths[index])) continue;
            depths[index] = here;
            nearest[index] = number;
        }
    }
    if (tile.visits < kVisitsPerUpdate) return;
    updateTile(tileColumn, tileRow);
}

void PlotRaster::updateTile(int tileColumn, int tileRow) {
    double farthest = kInfinity;
    const int lastColumn = std::min(columnCount, (tileColumn + 1) * kTileSize);
    const int lastRow = std::min(rowCount, (tileRow + 1) * kTileSize);
    for (int row = tileRow * kTileSize; row < lastRow; ++row)
        for (int column = tileColumn * kTileSize; column < lastColumn; ++column)
            farthest = std::min(farthest, depths[indexOf(column, row)]);
    Tile& tile = tiles[tileOf(tileColumn, tileRow)];
    tile.depth = farthest;
    visits += tile.visits;
    tile.visits = 0;
}

void PlotRaster::updateDepth() {
    whole.depth = kInfinity;
    for (const Tile& tile : tiles) whole.depth = std::min(whole.depth, tile.depth);
    visits += whole.visits;
    whole.visits = 0;
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

}  // namespace quarn
