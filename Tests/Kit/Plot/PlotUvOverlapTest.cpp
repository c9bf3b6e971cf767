#include <QuarnKit/Plot/Mesh/PlotUvOverlap.h>

#include <gtest/gtest.h>

#include <numeric>

#include "Support/Mesh/Meshes.h"

namespace quarn::test {
namespace {

// Part of the unit square.
double shareOf(const PlotUvOverlap& overlap) {
    int count = 0;
    for (int row = 0; row < PlotUvOverlap::kCells; ++row)
        for (int column = 0; column < PlotUvOverlap::kCells; ++column)
            count += overlap.isAt(column, row) ? 1 : 0;
    return static_cast<double>(count) / PlotUvOverlap::kCells / PlotUvOverlap::kCells;
}

double shareOf(const Mesh& mesh) {
    std::vector<TriangleUVs> uvs;
    for (const Triangle& triangle : mesh) uvs.push_back(uvsOf(triangle));
    std::vector<std::uint32_t> all(uvs.size());
    std::iota(all.begin(), all.end(), 0U);
    return shareOf(PlotUvOverlap(uvs, all));
}

TEST(PlotUvOverlap, GridCoversEachUvOnce) {
    for (const GridSize& size : {GridSize{1, 1}, GridSize{7, 5}, GridSize{64, 128}, GridSize{300, 256}})
        EXPECT_EQ(shareOf(flatGrid(size)), 0.0);
}

TEST(PlotUvOverlap, FoldedGridCoversEachUvTwice) {
    Mesh mesh = flatGrid({8, 4});
    foldUV(mesh);
    EXPECT_NEAR(shareOf(mesh), 1.0, 0.01);
}

TEST(PlotUvOverlap, PartThatOverlapsIsFoundWhereItIs) {
    const TriangleUVs lower = {Point<double, 2>(0.0, 0.0), Point<double, 2>(0.0, 1.0),
                               Point<double, 2>(1.0, 1.0)};
    const TriangleUVs upper = {Point<double, 2>(0.0, 0.0), Point<double, 2>(1.0, 1.0),
                               Point<double, 2>(1.0, 0.0)};
    // A quarter of the square, once more.
    const TriangleUVs more = {Point<double, 2>(0.0, 0.0), Point<double, 2>(0.0, 0.5),
                              Point<double, 2>(1.0, 0.5)};
    const PlotUvOverlap overlap({lower, upper, more}, {0, 1, 2});
    EXPECT_NEAR(shareOf(overlap), 0.25, 0.01);
    EXPECT_TRUE(overlap.isAt(10, 100));
    EXPECT_FALSE(overlap.isAt(10, 200));
    EXPECT_FALSE(overlap.isAt(250, 60));
}

TEST(PlotUvOverlap, WhatLiesOutsideOrIsNotOfTheListCountsNothing) {
    const TriangleUVs far = {Point<double, 2>(5.0, 5.0), Point<double, 2>(1e30, 5.0),
                             Point<double, 2>(5.0, 1e30)};
    const TriangleUVs half = {Point<double, 2>(0.0, 0.0), Point<double, 2>(1.0, 0.0),
                              Point<double, 2>(0.0, 1.0)};
    EXPECT_EQ(shareOf(PlotUvOverlap({far, far, half, half}, {0, 1, 2})), 0.0);
}

}  // namespace
}  // namespace quarn::test
