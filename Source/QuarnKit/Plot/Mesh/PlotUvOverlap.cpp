#include "PlotUvOverlap.h"

#include "TriangleCells.h"

namespace quarn {

namespace {

// Position of the sample in its cell. Few edges of regular layouts contain such points.
const Point<double, 2> kPlace(0.5137, 0.4871);
// Barycentric width of a triangle's edge, which adjacent triangles share.
constexpr double kEdge = 1e-6;

}  // namespace

PlotUvOverlap::PlotUvOverlap(const std::vector<TriangleUVs>& triangles,
                             const std::vector<std::uint32_t>& overlapping)
    : counts(indexOf(0, kCells)), followers(indexOf(0, kCells) + kCells) {
    for (std::size_t i = 0; i < followers.size(); ++i)
        followers[i] = static_cast<std::uint16_t>(i % (kCells + 1));
    for (const std::uint32_t triangle : overlapping) add(triangles[triangle]);
}

// A cell that two triangles cover is never visited again, so that the time per triangle is that of
// its rows, however large the triangles are.
void PlotUvOverlap::add(const TriangleUVs& uvs) {
    std::array<Point<double, 2>, 3> at;
    for (std::size_t i = 0; i < 3; ++i) at.at(i) = uvs.at(i) * static_cast<double>(kCells) - kPlace;
    const TriangleCells cells(at, kCells, kCells);
    for (int row = cells.rows().first; row <= cells.rows().last; ++row) {
        const CellRange columns = cells.columnsOf(row);
        for (int column = nextOpen(columns.first, row); column <= columns.last;
             column = nextOpen(column + 1, row)) {
            const auto [a, b, c] = cells.barycentric(column, row);
            if (!(a > kEdge && b > kEdge && c > kEdge)) continue;
            std::uint8_t& count = counts[indexOf(column, row)];
            if (++count == 2) followers[followerOf(column, row)] = static_cast<std::uint16_t>(column + 1);
        }
    }
}

int PlotUvOverlap::nextOpen(int column, int row) {
    int open = column;
    while (followers[followerOf(open, row)] != open) open = followers[followerOf(open, row)];
    // Shorten the path for the next search.
    while (column != open) {
        std::uint16_t& follower = followers[followerOf(column, row)];
        column = follower;
        follower = static_cast<std::uint16_t>(open);
    }
    return open;
}

}  // namespace quarn
