#include "UvOverlap.h"

#include <algorithm>

#include "TriangleCells.h"

namespace quarn {

namespace {

// Where in its cell a point lies. Few edges of regular layouts go through such points.
const Point<double, 2> kPlace(0.5137, 0.4871);
// Part of a triangle that counts as its edge, which neighbours share.
constexpr double kEdge = 1e-6;

}  // namespace

UvOverlap::UvOverlap(const std::vector<TriangleUVs>& triangles) : counts(indexOf(0, kCells)) {
    for (const TriangleUVs& uvs : triangles)
        if (uvs[0] != kNoUV) add(uvs);
}

void UvOverlap::add(const TriangleUVs& uvs) {
    std::array<Point<double, 2>, 3> at;
    for (std::size_t i = 0; i < 3; ++i) at.at(i) = uvs.at(i) * static_cast<double>(kCells) - kPlace;
    visitCells(at, kCells, kCells, [&](int column, int row, double a, double b, double c) {
        std::uint8_t& count = counts[indexOf(column, row)];
        if (a > kEdge && b > kEdge && c > kEdge && count < 2) ++count;
    });
}

double UvOverlap::share() const {
    const auto covered =
        counts.size() - static_cast<std::size_t>(std::count(counts.begin(), counts.end(), 0));
    const auto twice = static_cast<std::size_t>(std::count(counts.begin(), counts.end(), 2));
    return covered == 0 ? 0.0 : static_cast<double>(twice) / static_cast<double>(covered);
}

}  // namespace quarn
