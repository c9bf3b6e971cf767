#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "Library/Search/RegionMapCases.h"
#include "Reference/Mesh/ReferenceRegionMap.h"
#include "Support/Bits.h"

using namespace quarn::test;

namespace {

void expectSameNode(const RegionNode& node, const ReferenceRegionMap::Node& expected) {
    ASSERT_EQ(node.count(), expected.count);
    if (node.count() < 0) {
        for (int quadrant = 0; quadrant < 4; ++quadrant)
            ASSERT_EQ(node.child(quadrant), expected.children[static_cast<std::size_t>(quadrant)])
                << quadrant;
    }
    for (int i = 0; i < node.count(); ++i)
        ASSERT_EQ(node.triangle(i), expected.triangles[static_cast<std::size_t>(i)]) << i;
}

void expectSameMap(const RegionMap& map, const ReferenceRegionMap& expected) {
    EXPECT_TRUE(sameBits(map.rootRect().minU, expected.rootRect.minU));
    EXPECT_TRUE(sameBits(map.rootRect().maxU, expected.rootRect.maxU));
    EXPECT_TRUE(sameBits(map.rootRect().minV, expected.rootRect.minV));
    EXPECT_TRUE(sameBits(map.rootRect().maxV, expected.rootRect.maxV));
    EXPECT_EQ(map.triangleCount(), expected.triangleCount);
    EXPECT_EQ(map.failedSplits(), expected.failedSplits);
    EXPECT_EQ(map.maxDepth(), expected.statistics.maxDepth);
    EXPECT_EQ(map.minDepth(), expected.statistics.minDepth);
    EXPECT_EQ(map.maxLeafSize(), expected.statistics.maxLeafSize);
    EXPECT_EQ(map.minLeafSize(), expected.statistics.minLeafSize);
    EXPECT_EQ(map.leafTriangleTotal(), expected.statistics.leafTriangleTotal);
    EXPECT_EQ(map.leafCount(), expected.statistics.leafCount);
    EXPECT_EQ(map.innerCount(), expected.statistics.innerCount);
    EXPECT_EQ(map.emptyLeafCount(), expected.statistics.emptyLeafCount);
    ASSERT_EQ(map.nodes().size(), expected.nodes.size());
    for (std::size_t i = 0; i < expected.nodes.size(); ++i) {
        SCOPED_TRACE(i);
        expectSameNode(map.nodes()[i], expected.nodes[i]);
        if (::testing::Test::HasFatalFailure()) return;
    }
}

class RegionMapBuild : public ::testing::TestWithParam<Soup> {};

}  // namespace

TEST_P(RegionMapBuild, GivesTheNodesAndCountersOfTheReferenceOnceAndAgain) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<Triangle> first = trianglesOf(GetParam(), rng);
        const std::vector<Triangle> second = trianglesOf(anySoup(rng), rng);
        RegionMap map;
        ReferenceRegionMap plain;
        for (const std::vector<Triangle>* triangles : {&first, &second, &first}) {
            rebuildOver(map, *triangles);
            plain.rebuild(*triangles);
            expectSameMap(map, plain);
            if (HasFatalFailure()) return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllSoups, RegionMapBuild,
                         ::testing::Values(Soup::Grid, Soup::Small, Soup::Overlapping, Soup::Degenerate,
                                           Soup::OnOneLine, Soup::OneRegion, Soup::AroundOnePoint,
                                           Soup::Special));

// Ranges of up to 64 triangles are cut by masks, larger ones by lists.
TEST(RegionMapBuildAtLarge, OfAboutSixtyFourTrianglesIsThatOfTheReference) {
    for (std::size_t count = 60; count < 70; ++count) {
        Rng rng(static_cast<int>(count));
        SCOPED_TRACE(count);
        std::vector<Triangle> triangles;
        for (std::size_t i = 0; i < count; ++i) {
            const UV center = uvAround(rng, {0.5, 0.5}, 0.4);
            triangles.push_back(triangleOver(uvAround(rng, center, 0.1), uvAround(rng, center, 0.1),
                                             uvAround(rng, center, 0.1)));
        }
        RegionMap map;
        ReferenceRegionMap plain;
        rebuildOver(map, triangles);
        plain.rebuild(triangles);
        expectSameMap(map, plain);
    }
}

TEST(RegionMapBuildAtLarge, OfManyTrianglesIsThatOfTheReference) {
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        // Small ones only: where thousands overlap, each level loses just a few and the tree fills
        // the memory.
        const std::vector<Triangle> triangles =
            trianglesOf(rng.coin() ? Soup::Small : Soup::Degenerate, rng, 3000);
        RegionMap map;
        ReferenceRegionMap plain;
        rebuildOver(map, triangles);
        plain.rebuild(triangles);
        expectSameMap(map, plain);
    }
}

// The same lists of long leaves again, other ones, none, and the first ones again.
TEST(RegionMapBuildAtLarge, OfOverlapsAgainAndAgainIsThatOfTheReference) {
    for (int i = 0; i < seedCount(30); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<Triangle> first = trianglesOf(Soup::Overlapping, rng, 200);
        const std::vector<Triangle> second = trianglesOf(Soup::OneRegion, rng, 200);
        const std::vector<Triangle> none = gridOver(3, 3);
        RegionMap map;
        ReferenceRegionMap plain;
        for (const auto* triangles : {&first, &first, &first, &second, &none, &second, &first, &first}) {
            rebuildOver(map, *triangles);
            plain.rebuild(*triangles);
        }
        expectSameMap(map, plain);
        if (HasFatalFailure()) return;
    }
}

// Without this the comparisons above might pass on trees that never give up.
TEST(RegionMapBuildAtLarge, RandomMeshesGiveUpSplitsInsideOfTheTree) {
    int withBoth = 0;
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        const std::vector<Triangle> triangles = trianglesOf(Soup::Overlapping, rng);
        RegionMap map;
        rebuildOver(map, triangles);
        if (map.failedSplits() > 0 && map.innerCount() > 0) ++withBoth;
    }
    EXPECT_GT(withBoth, 0);
}
