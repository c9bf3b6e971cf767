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
    : counts(indexOf(0, kCells)) {
    for (const std::uint32_t triangle : overlapping) add(triangles[triangle]);
}

void PlotUvOverlap::add(const TriangleUVs& uvs) {
    std::array<Point<double, 2>, 3> at;
    for (std::size_t i = 0; i < 3; ++i) at.at(i) = uvs.at(i) * static_cast<double>(kCells) - kPlace;
    visitCells(at, kCells, kCells, [&](int column, int row, double a, double b, double c) {
        std::uint8_t& count = counts[indexOf(column, row)];
        if (a > kEdge && b > kEdge && c > kEdge && count < 2) ++count;
    });
}

}  // namespace quarn
