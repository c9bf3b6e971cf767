#include "UvOverlap.h"

#include <gtest/gtest.h>

#include "Support/Meshes.h"

namespace quarn::test {
namespace {

std::vector<TriangleUVs> uvsOf(const Mesh& mesh) {
    std::vector<TriangleUVs> uvs;
    for (const Triangle& triangle : mesh)
        uvs.push_back({triangle.vertices[0].uv, triangle.vertices[1].uv, triangle.vertices[2].uv});
    return uvs;
}

TEST(UvOverlap, AGridCoversEachUvOnce) {
    for (const GridSize& size : {GridSize{1, 1}, GridSize{7, 5}, GridSize{64, 128}, GridSize{300, 256}})
        EXPECT_EQ(UvOverlap(uvsOf(flatGrid(size))).share(), 0.0);
}

TEST(UvOverlap, AFoldedGridCoversEachUvTwice) {
    Mesh mesh = flatGrid({8, 4});
    foldUV(mesh);
    EXPECT_NEAR(UvOverlap(uvsOf(mesh)).share(), 1.0, 0.01);
}

TEST(UvOverlap, ThePartThatOverlapsIsFoundWhereItIs) {
    const TriangleUVs lower = {Point<double, 2>(0.0, 0.0), Point<double, 2>(0.0, 1.0),
                               Point<double, 2>(1.0, 1.0)};
    const TriangleUVs upper = {Point<double, 2>(0.0, 0.0), Point<double, 2>(1.0, 1.0),
                               Point<double, 2>(1.0, 0.0)};
    // A quarter of the square, once more.
    const TriangleUVs more = {Point<double, 2>(0.0, 0.0), Point<double, 2>(0.0, 0.5),
                              Point<double, 2>(1.0, 0.5)};
    const UvOverlap overlap({lower, upper, more});
    EXPECT_NEAR(overlap.share(), 0.25, 0.01);
    EXPECT_TRUE(overlap.isAt(10, 100));
    EXPECT_FALSE(overlap.isAt(10, 200));
    EXPECT_FALSE(overlap.isAt(250, 60));
}

TEST(UvOverlap, WhatHasNoUvOrLiesOutsideCountsNothing) {
    const TriangleUVs far = {Point<double, 2>(5.0, 5.0), Point<double, 2>(1e30, 5.0),
                             Point<double, 2>(5.0, 1e30)};
    EXPECT_EQ(UvOverlap({{kNoUV, kNoUV, kNoUV}, far, far}).share(), 0.0);
    EXPECT_EQ(UvOverlap({}).share(), 0.0);
}

}  // namespace
}  // namespace quarn::test
