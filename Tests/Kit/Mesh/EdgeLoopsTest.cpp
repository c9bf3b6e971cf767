#include <QuarnKit/Mesh/EdgeLoops.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

#include <QuarnKit/Mesh/VertexIds.h>
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Edges = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

TEST(EdgeLoops, EdgesInAnyOrderAndDirectionAreOneWalk) {
    const auto loops = buildEdgeLoops({{3, 2}, {5, 4}, {2, 5}});
    ASSERT_THAT(loops, SizeIs(1));
    EXPECT_THAT(loops[0].points, ElementsAre(3, 2, 5, 4));
    EXPECT_THAT(loops[0].edges, ElementsAre(0, 2, 1));
}

TEST(EdgeLoops, LoopRepeatsItsFirstPoint) {
    const auto loops = buildEdgeLoops({{1, 2}, {3, 1}, {2, 3}});
    ASSERT_THAT(loops, SizeIs(1));
    EXPECT_THAT(loops[0].points, ElementsAre(1, 2, 3, 1));
}

TEST(EdgeLoops, LoopsThatTouchStayApart) {
    const auto loops = buildEdgeLoops({{0, 1}, {1, 2}, {2, 0}, {0, 3}, {3, 4}, {4, 0}});
    ASSERT_THAT(loops, SizeIs(2));
    EXPECT_THAT(loops[0].points, ElementsAre(0, 1, 2, 0));
    EXPECT_THAT(loops[1].points, ElementsAre(0, 3, 4, 0));
}

TEST(EdgeLoops, LoopThatAWalkPassesIsAnotherWalk) {
    const auto loops = buildEdgeLoops({{0, 1}, {1, 2}, {2, 3}, {3, 1}, {1, 4}});
    ASSERT_THAT(loops, SizeIs(2));
    EXPECT_THAT(loops[0].points, ElementsAre(1, 2, 3, 1));
    EXPECT_THAT(loops[1].points, ElementsAre(0, 1, 4));
}

TEST(EdgeLoops, NoEdgesAreNoWalks) {
    EXPECT_THAT(buildEdgeLoops({}), IsEmpty());
}

TEST(EdgeLoops, RandomEdgesAreEachWalkedOnceAndWalksHangTogether) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Edges edges;
        const int count = rng.integer(1, 60);
        for (int k = 0; k < count; ++k) {
            const auto from = static_cast<std::uint32_t>(rng.integer(0, 20));
            edges.emplace_back(from, (from + static_cast<std::uint32_t>(rng.integer(1, 20))) % 21);
        }
        std::vector<std::uint32_t> walked;
        for (const EdgeLoop& loop : buildEdgeLoops(edges)) {
            ASSERT_EQ(loop.points.size(), loop.edges.size() + 1);
            const std::set<std::uint32_t> visited(loop.points.begin(), loop.points.end());
            ASSERT_EQ(visited.size(),
                      loop.points.size() - (loop.points.front() == loop.points.back() ? 1 : 0));
            for (std::size_t k = 0; k < loop.edges.size(); ++k) {
                const auto step = std::minmax({loop.points[k], loop.points[k + 1]});
                const auto& [from, to] = edges[loop.edges[k]];
                ASSERT_EQ(step, std::minmax({from, to}));
                walked.push_back(loop.edges[k]);
            }
        }
        std::sort(walked.begin(), walked.end());
        ASSERT_EQ(walked.size(), edges.size());
        for (std::uint32_t k = 0; k < walked.size(); ++k) ASSERT_EQ(walked[k], k);
    }
}

TEST(VertexIds, EqualPositionsHaveOneNumberAndOthersHaveNot) {
    VertexIds<3> ids;
    std::map<Point<double, 3>, std::uint32_t> expected;
    Rng rng(1);
    for (int i = 0; i < 5000; ++i) {
        const Point<double, 3> point(rng.integer(-5, 5), rng.integer(-5, 5), rng.integer(-5, 5));
        const auto [known, isNew] = expected.try_emplace(point, static_cast<std::uint32_t>(expected.size()));
        ASSERT_EQ(ids.idOf(point), known->second);
        ASSERT_EQ(ids.points()[known->second], point);
    }
    EXPECT_EQ(ids.points().size(), expected.size());
}

TEST(VertexIds, ZeroIsMinusZero) {
    VertexIds<3> ids;
    EXPECT_EQ(ids.idOf({0.0, 1.0, -0.0}), ids.idOf({-0.0, 1.0, 0.0}));
}

}  // namespace
}  // namespace quarn::test
