#include <gtest/gtest.h>

#include <cmath>

#include <QuarnScreen/Detail/Limits/RegionMapEstimate.h>

#include "Library/Search/RegionMapCases.h"
#include "Support/Mesh/Meshes.h"

using namespace quarn;
using namespace quarn::test;

namespace {

constexpr std::uint64_t kNoLimit = 1'000'000'000;

void expectCountOfBuild(const std::vector<Triangle>& triangles) {
    RegionMap map;
    rebuildOver(map, triangles);
    const detail::RegionMapEstimate growth =
        detail::countRegionMap(quarn::detail::uvBoxesOf(triangles), kNoLimit);
    EXPECT_TRUE(growth.isWhole);
    EXPECT_EQ(growth.nodes, map.nodes().size());
    EXPECT_EQ(growth.leafEntries, static_cast<std::uint64_t>(map.leafTriangleTotal()));
    EXPECT_GE(growth.peakNodes, growth.nodes);
    EXPECT_GE(growth.peakEntries, growth.leafEntries);
    // What is left of the build fits in, with the room that its list of nodes holds in reserve.
    EXPECT_GE(growth.memory(),
              map.nodes().capacity() * sizeof(RegionNode) + growth.leafEntries * sizeof(int));
}

// Triangles of which each overlaps a large part of the others.
std::vector<Triangle> overlappingTriangles(Rng& rng, int count) {
    std::vector<Triangle> triangles;
    for (int i = 0; i < count; ++i) triangles.push_back(triangleOf(Soup::Overlapping, rng));
    return triangles;
}

class RegionMapEstimateOf : public ::testing::TestWithParam<Soup> {};

}  // namespace

TEST_P(RegionMapEstimateOf, RandomMeshesIsWhatABuildMakes) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        expectCountOfBuild(trianglesOf(GetParam(), rng));
    }
}

INSTANTIATE_TEST_SUITE_P(AllSoups, RegionMapEstimateOf,
                         ::testing::Values(Soup::Grid, Soup::Small, Soup::Overlapping, Soup::Degenerate,
                                           Soup::OnOneLine, Soup::OneRegion, Soup::AroundOnePoint,
                                           Soup::Special));

TEST(RegionMapEstimate, OfUsualMeshesIsWhatABuildMakes) {
    for (const Mesh& mesh : {Mesh(), flatGrid({64, 64}), flatGrid({100, 37}), dome({90, 40}, kHalfSphere),
                             gridWithSeam({50, 20}), separatePieces(5, {12, 9})})
        expectCountOfBuild(mesh);
}

TEST(RegionMapEstimate, DroppedNodesAreInThePeakAlone) {
    int withDropped = 0;
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        const detail::RegionMapEstimate growth =
            detail::countRegionMap(quarn::detail::uvBoxesOf(trianglesOf(Soup::Overlapping, rng)), kNoLimit);
        if (growth.peakNodes > growth.nodes) ++withDropped;
    }
    EXPECT_GT(withDropped, 0);
}

TEST(RegionMapEstimate, CountEndsSoonAfterItsLimit) {
    Rng rng(0);
    const std::vector<RegionRect> boxes = quarn::detail::uvBoxesOf(overlappingTriangles(rng, 2000));
    constexpr std::uint64_t kLimit = 1'000'000;
    const detail::RegionMapEstimate growth = detail::countRegionMap(boxes, kLimit);
    EXPECT_FALSE(growth.isWhole);
    EXPECT_GT(growth.steps, kLimit);
    // Beyond the limit each quadrant on the way up to the root is built once more.
    EXPECT_LE(growth.steps, kLimit + 4 * 18 * boxes.size());
}

TEST(RegionMapEstimate, UsualMeshesAreSurelySmall) {
    for (const Mesh& mesh :
         {Mesh(), flatGrid({1, 1}), flatGrid({64, 64}), flatGrid({100, 37}), dome({90, 40}, kHalfSphere),
          gridWithSeam({50, 20}), separatePieces(5, {12, 9}), wave({333, 200})})
        EXPECT_TRUE(detail::isRegionMapSizeBounded(quarn::detail::uvBoxesOf(mesh))) << mesh.size();
}

TEST(RegionMapEstimate, UVsAloneHaveTheBoxesOfTheirTriangles) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<Triangle> triangles = trianglesOf(Soup::Overlapping, rng);
        std::vector<std::array<Point<double, 2>, 3>> uvs;
        for (const Triangle& triangle : triangles) {
            const auto& [a, b, c] = triangle.vertices;
            uvs.push_back({a.uv, b.uv, c.uv});
        }
        EXPECT_TRUE(quarn::detail::uvBoxesOf(uvs) == quarn::detail::uvBoxesOf(triangles));
    }
}

// A disk of UVs, as a dome has them, meets in its middle with very many triangles.
TEST(RegionMapEstimate, FanAroundOnePointIsSurelySmallAmongManyTriangles) {
    Mesh mesh = dome({300, 200}, kHalfSphere);
    for (Triangle& triangle : mesh)
        for (TriangleVertex& vertex : triangle.vertices) {
            const double angle = 6.283185307179586 * vertex.uv[0];
            vertex.uv = {0.5 + 0.5 * vertex.uv[1] * std::sin(angle),
                         0.5 + 0.5 * vertex.uv[1] * std::cos(angle)};
        }
    EXPECT_TRUE(detail::isRegionMapSizeBounded(quarn::detail::uvBoxesOf(mesh)));
}

TEST(RegionMapEstimate, WhatIsSurelySmallTakesReasonableSteps) {
    int small = 0;
    for (int i = 0; i < seedCount(600); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<RegionRect> boxes = quarn::detail::uvBoxesOf(trianglesOf(anySoup(rng), rng, 400));
        if (!detail::isRegionMapSizeBounded(boxes)) continue;
        ++small;
        // Twelve levels at most, each with as many boxes as cells are touched, and what full cells
        // may take.
        const detail::RegionMapEstimate growth = detail::countRegionMap(boxes, kNoLimit);
        EXPECT_LE(growth.steps, (12 * 64 + 64) * boxes.size());
    }
    EXPECT_GT(small, seedCount(100));
}

TEST(RegionMapEstimate, ThousandsOfOverlappingTrianglesAreBeyondReasonAndStripsAreNot) {
    Rng rng(1);
    const std::vector<RegionRect> overlapping = quarn::detail::uvBoxesOf(overlappingTriangles(rng, 2000));
    EXPECT_FALSE(detail::isRegionMapSizeBounded(overlapping));
    EXPECT_FALSE(
        detail::countRegionMap(overlapping, detail::reasonableRegionMapSteps(overlapping.size())).isWhole);
    const std::vector<RegionRect> strips = quarn::detail::uvBoxesOf(flatGrid({1, 3000}));
    EXPECT_FALSE(detail::isRegionMapSizeBounded(strips));
    EXPECT_TRUE(detail::countRegionMap(strips, detail::reasonableRegionMapSteps(strips.size())).isWhole);
}
