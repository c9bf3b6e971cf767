#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "Library/Search/RegionMapCases.h"

using namespace quarn::test;

namespace {

constexpr int kNoLeafYet = 0x7FFFFFFF;

std::vector<Triangle> copiesOf(const Triangle& triangle, std::size_t count) {
    return std::vector<Triangle>(count, triangle);
}

const Triangle kHalfSquare = triangleOver({0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0});

}  // namespace

TEST(RegionMap, StartsWithoutNodes) {
    static_assert(!std::is_copy_constructible_v<RegionMap>);
    const RegionMap map;
    EXPECT_TRUE(map.nodes().empty());
    EXPECT_EQ(map.maxDepth(), 0);
    EXPECT_EQ(map.minDepth(), kNoLeafYet);
    EXPECT_EQ(map.maxLeafSize(), 0);
    EXPECT_EQ(map.minLeafSize(), kNoLeafYet);
    EXPECT_EQ(map.leafCount() + map.innerCount() + map.emptyLeafCount() + map.leafTriangleTotal(), 0);
}

TEST(RegionMap, OfNoTrianglesIsOneEmptyLeafOfAnInvertedRectangle) {
    RegionMap map;
    map.rebuild(nullptr, nullptr);
    constexpr double kGreatest = std::numeric_limits<double>::max();
    EXPECT_EQ(map.rootRect().minU, kGreatest);
    EXPECT_EQ(map.rootRect().maxU, -kGreatest);
    EXPECT_EQ(map.rootRect().minV, kGreatest);
    EXPECT_EQ(map.rootRect().maxV, -kGreatest);
    ASSERT_EQ(map.nodes().size(), 1U);
    EXPECT_EQ(map.nodes()[0].count(), 0);
    EXPECT_EQ(map.emptyLeafCount(), 1);
    EXPECT_EQ(map.leafCount(), 1);
    EXPECT_EQ(map.minLeafSize(), 0);
    EXPECT_EQ(locatedIn(map, 0.0, 0.0), nullptr);
}

TEST(RegionMap, OfUpToEightTrianglesIsASingleLeaf) {
    const std::vector<Triangle> grid = gridOver(2, 2);
    for (int count = 1; count <= 8; ++count) {
        RegionMap map;
        map.rebuild(grid.data(), grid.data() + count);
        ASSERT_EQ(map.nodes().size(), 1U);
        EXPECT_EQ(map.nodes()[0].count(), count);
        EXPECT_EQ(map.triangleCount(), count);
        EXPECT_EQ(map.maxDepth(), 1);
        EXPECT_EQ(map.minDepth(), 1);
        for (int i = 0; i < count; ++i) EXPECT_EQ(map.nodes()[0].triangle(i), grid.data() + i);
    }
}

// Eight halves of four cells and a small one in a corner: each quadrant holds fewer than the nine.
TEST(RegionMap, OfNineTrianglesIsDivided) {
    std::vector<Triangle> triangles = gridOver(2, 2);
    triangles.push_back(triangleOver({0.0, 0.0}, {0.125, 0.0}, {0.0, 0.125}));
    RegionMap map;
    rebuildOver(map, triangles);
    EXPECT_EQ(map.nodes().back().count(), -1);
    EXPECT_EQ(map.innerCount() + map.leafCount(), static_cast<int>(map.nodes().size()));
    EXPECT_GT(map.leafTriangleTotal(), map.triangleCount());
}

TEST(RegionMap, TrianglesOfOneRegionGiveUpAfterTwoLevels) {
    const std::vector<Triangle> triangles = copiesOf(kHalfSquare, 9);
    RegionMap map;
    rebuildOver(map, triangles);
    EXPECT_EQ(map.failedSplits(), 1);
    ASSERT_EQ(map.nodes().size(), 1U);
    EXPECT_EQ(map.nodes()[0].count(), 9);
    EXPECT_EQ(map.maxDepth(), 1);
    EXPECT_EQ(map.leafTriangleTotal(), 9);
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(map.nodes()[0].triangle(i), &triangles[static_cast<std::size_t>(i)]);
}

// Toward the origin each level loses one triangle, so that no level fails to reduce.
TEST(RegionMap, NodeOfDepth18IsALeafHoweverManyTrianglesItHolds) {
    std::vector<Triangle> triangles;
    for (int k = 0; k <= 30; ++k) {
        const double side = std::ldexp(1.0, -k);
        triangles.push_back(triangleOver({0.6 * side, 0.6 * side}, {side, 0.6 * side}, {0.6 * side, side}));
    }
    const double tiny = std::ldexp(1.0, -40);
    for (int i = 0; i < 9; ++i) triangles.push_back(triangleOver({0.0, 0.0}, {tiny, 0.0}, {0.0, tiny}));
    RegionMap map;
    rebuildOver(map, triangles);
    EXPECT_EQ(map.maxDepth(), 18);
    EXPECT_EQ(map.failedSplits(), 0);
    // The nine, and those of k = 17 to 30, which reach into the square of side 2^-17.
    EXPECT_EQ(map.maxLeafSize(), 9 + 14);
    EXPECT_EQ(map.nodes()[0].count(), 9 + 14);
}

TEST(RegionMap, PointOnASplitLineIsFoundInTheLowerQuadrant) {
    const std::vector<Triangle> grid = gridOver(4, 4);
    RegionMap map;
    rebuildOver(map, grid);
    const RegionNode& root = map.nodes().back();
    ASSERT_EQ(root.count(), -1);
    const auto locatedInQuadrant = [&](int quadrant, const RegionRect& rect, double u, double v) {
        std::optional<const Triangle*> result;
        map.locate(root.child(quadrant), rect, u, v, result);
        return result.value_or(nullptr);
    };
    for (const double along : {0.1, 0.25, 0.3, 0.5}) {
        const Triangle* const left = locatedInQuadrant(0, {0.0, 0.5, 0.0, 0.5}, 0.5, along);
        EXPECT_NE(left, nullptr);
        EXPECT_EQ(locatedIn(map, 0.5, along), left);
        const Triangle* const above = locatedInQuadrant(0, {0.0, 0.5, 0.0, 0.5}, along, 0.5);
        EXPECT_NE(above, nullptr);
        EXPECT_EQ(locatedIn(map, along, 0.5), above);
    }
    EXPECT_EQ(locatedIn(map, 0.5, 0.7), locatedInQuadrant(2, {0.0, 0.5, 0.5, 1.0}, 0.5, 0.7));
    EXPECT_EQ(locatedIn(map, 0.7, 0.5), locatedInQuadrant(1, {0.5, 1.0, 0.0, 0.5}, 0.7, 0.5));
}

TEST(RegionMap, PointOnASharedEdgeIsInTheFirstInStoredOrder) {
    std::vector<Triangle> triangles = gridOver(1, 1);
    RegionMap map;
    rebuildOver(map, triangles);
    EXPECT_EQ(locatedIn(map, 0.5, 0.5), &triangles[0]);
    std::swap(triangles[0], triangles[1]);
    rebuildOver(map, triangles);
    EXPECT_EQ(locatedIn(map, 0.5, 0.5), &triangles[0]);
}

TEST(RegionMap, SecondRebuildAppends) {
    const std::vector<Triangle> many = gridOver(6, 6);
    const std::vector<Triangle> few = gridOver(1, 1);
    RegionMap map;
    rebuildOver(map, many);
    const std::size_t firstNodes = map.nodes().size();
    const int firstRoot = static_cast<int>(firstNodes) - 1;
    const Triangle* const before = locatedIn(map, 0.3, 0.2);
    rebuildOver(map, few);
    ASSERT_EQ(map.nodes().size(), firstNodes + 1);
    EXPECT_EQ(map.nodes().back().count(), 2);
    EXPECT_EQ(map.nodes()[firstNodes - 1].count(), -1);
    EXPECT_EQ(map.triangleCount(), 2);
    EXPECT_EQ(map.leafCount(), 1);
    EXPECT_EQ(map.innerCount(), 0);
    EXPECT_EQ(locatedIn(map, 0.3, 0.2), &few[0]);

    // Out of reach of a search from the root, yet whole.
    std::optional<const Triangle*> result;
    map.locate(firstRoot, {0.0, 1.0, 0.0, 1.0}, 0.3, 0.2, result);
    EXPECT_EQ(result, before);
}

TEST(RegionMap, ClearedMapIsLikeANewOne) {
    RegionMap map;
    const std::vector<Triangle> triangles = gridOver(9, 9);
    rebuildOver(map, triangles);
    map.clear();
    EXPECT_TRUE(map.nodes().empty());
    EXPECT_EQ(map.triangleCount(), 0);
    EXPECT_EQ(map.leafCount(), 0);
    EXPECT_EQ(map.innerCount(), 0);
    EXPECT_GT(map.rootRect().minU, map.rootRect().maxU);

    rebuildOver(map, triangles);
    RegionMap fresh;
    rebuildOver(fresh, triangles);
    EXPECT_EQ(map.nodes().size(), fresh.nodes().size());
    EXPECT_EQ(locatedIn(map, 0.3, 0.7), locatedIn(fresh, 0.3, 0.7));
}

TEST(RegionMap, FailedSplitsAreCountedAnewByEachBuild) {
    const std::vector<Triangle> same = copiesOf(kHalfSquare, 9);
    RegionMap map;
    rebuildOver(map, same);
    rebuildOver(map, same);
    EXPECT_EQ(map.failedSplits(), 1);
}

TEST(RegionMap, TriangleWithoutAreaOrWithoutGeometryHoldsNothing) {
    std::vector<Triangle> triangles = {triangleOver({0.0, 0.0}, {0.5, 0.5}, {1.0, 1.0}), kHalfSquare};
    triangles[1].uvDeterminant = 0.0;
    RegionMap map;
    rebuildOver(map, triangles);
    EXPECT_EQ(locatedIn(map, 0.5, 0.5), nullptr);
    EXPECT_EQ(locatedIn(map, 0.75, 0.25), nullptr);
}

TEST(RegionMap, ResultStaysAsItWasWhereNoTriangleHoldsThePoint) {
    const std::vector<Triangle> triangles = {kHalfSquare};
    RegionMap map;
    rebuildOver(map, triangles);
    std::optional<const Triangle*> result;
    map.locate(0, map.rootRect(), 0.25, 0.75, result);
    EXPECT_FALSE(result.has_value());
    map.locate(0, map.rootRect(), 0.75, 0.25, result);
    EXPECT_EQ(result, triangles.data());
    map.locate(0, map.rootRect(), 0.25, 0.75, result);
    EXPECT_EQ(result, triangles.data());
}
