#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <QuarnScreen/Detail/Boundary/BoundaryWalk.h>
#include "Library/Boundary/BoundaryCases.h"
#include "Reference/Mesh/ReferenceBoundary.h"
#include "Support/Bits.h"

using namespace quarn::test;
using quarn::detail::BoundaryWalkResult;
using quarn::detail::findBoundary;

namespace {

void expectSameOutline(const std::vector<Triangle>& triangles, const ReferenceBoundary& expected) {
    Boundary boundary;
    boundary.points.resize(2);
    boundary.uvPoints.resize(2);
    boundary.triangles.resize(2);
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    EXPECT_EQ(result.isSingleWithUV, expected.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, expected.edgesLeft);
    EXPECT_EQ(boundary.triangles, expected.boundary.triangles);
    ASSERT_EQ(boundary.points.size(), expected.boundary.points.size());
    ASSERT_EQ(boundary.uvPoints.size(), expected.boundary.uvPoints.size());
    for (std::size_t i = 0; i < boundary.points.size(); ++i) {
        ASSERT_TRUE(sameBits(boundary.points[i], expected.boundary.points[i])) << i;
        ASSERT_TRUE(sameBits(boundary.uvPoints[i], expected.boundary.uvPoints[i])) << i;
    }
}

class BoundaryOfRandomTriangles : public ::testing::TestWithParam<BoundaryCase> {};

}  // namespace

TEST_P(BoundaryOfRandomTriangles, IsThatOfTheTwoMultimaps) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<Triangle> triangles = boundaryCase(GetParam(), rng);
        const ReferenceBoundary plain(triangles);
        ASSERT_TRUE(plain.hasEnded);
        expectSameOutline(triangles, plain);
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(AllCases, BoundaryOfRandomTriangles,
                         ::testing::Values(BoundaryCase::Grid, BoundaryCase::Holes, BoundaryCase::Seams,
                                           BoundaryCase::Pieces, BoundaryCase::Soup, BoundaryCase::Lattice,
                                           BoundaryCase::NoUV, BoundaryCase::SignedZero,
                                           BoundaryCase::Infinite));

TEST(BoundaryAtLarge, IsThatOfTheTwoMultimaps) {
    for (int i = 0; i < seedCount(6); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<Triangle> triangles = gridAt(0.0, rng.integer(80, 160), rng.integer(80, 160));
        if (i % 2 == 1) shuffle(triangles, rng);
        if (i >= 2) std::erase_if(triangles, [&](const Triangle&) { return rng.integer(0, i) == 0; });
        expectSameOutline(triangles, ReferenceBoundary(triangles));
    }
}

TEST(BoundaryAtLarge, PassesACornerOfManyEdgesAsOftenAsThereAreEdges) {
    // Petals around the origin, each of them from one corner below it to one above. The one with
    // the least corner stands last, so the walk goes through all others before it gets back there.
    constexpr int kPetals = 2000;
    std::vector<Triangle> triangles;
    for (int i = kPetals; i > 0; --i)
        triangles.push_back(
            triangleOf(cornerOnPlane(kPetals - i + 1, -i), cornerOnPlane(-i, i), cornerOnPlane(0, 0)));
    std::rotate(triangles.begin(), triangles.begin() + 1, triangles.end());
    const ReferenceBoundary plain(triangles);
    EXPECT_TRUE(plain.isSingleWithUV);
    EXPECT_EQ(plain.boundary.points.size(), 3U * kPetals + 1U);
    expectSameOutline(triangles, plain);
}

TEST(BoundaryAtLarge, WithNumbersThatAreNoneIsThatOfTheTwoMultimapsWhereTheirWalkEnds) {
    int ended = 0;
    int endless = 0;
    for (int i = 0; i < seedCount(6000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<Triangle> triangles =
            boundaryCase(static_cast<BoundaryCase>(rng.integer(static_cast<int>(BoundaryCase::Lattice),
                                                               static_cast<int>(BoundaryCase::Count) - 1)),
                         rng, true);
        const ReferenceBoundary plain(triangles, 10'000);
        ++(plain.hasEnded ? ended : endless);
        if (plain.hasEnded) expectSameOutline(triangles, plain);
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(ended, seedCount(1000));
    EXPECT_GT(endless, 0);
}

// Few triangles with few different corners, one of them with NaN: the walks that end meet keys of
// the maps that are neither less nor greater than the corner that is looked up.
TEST(BoundaryAtLarge, OfSmallMeshesWithNaNIsThatOfTheTwoMultimapsWhereTheirWalkEnds) {
    constexpr std::size_t kStepLimit = 1'000;
    int ended = 0;
    for (int i = 0; i < seedCount(20'000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<Triangle> triangles(static_cast<std::size_t>(rng.integer(2, 5)));
        for (Triangle& triangle : triangles) {
            for (TriangleVertex& corner : triangle.vertices)
                for (std::size_t axis = 0; axis < 3; ++axis) corner.position[axis] = rng.integer(0, 2);
        }
        TriangleVertex& corner = triangles[static_cast<std::size_t>(rng.integer(0, 1))].vertices[1];
        corner.position[static_cast<std::size_t>(rng.integer(0, 2))] = std::nan("");
        const ReferenceBoundary plain(triangles, kStepLimit);
        if (!plain.hasEnded) continue;
        ++ended;
        expectSameOutline(triangles, plain);
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(ended, seedCount(2000));
}

// Without this the comparisons above might pass on boundaries that never need a choice.
TEST(BoundaryAtLarge, RandomTrianglesReachAllTurnsOfTheWalk) {
    int single = 0;
    int closedSurfaces = 0;
    int withEdgesLeft = 0;
    int withManyTurns = 0;
    int throughTheStart = 0;
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        const auto kind = static_cast<BoundaryCase>(i % static_cast<int>(BoundaryCase::Count));
        const std::vector<Triangle> triangles = boundaryCase(kind, rng);
        const ReferenceBoundary plain(triangles);
        const auto& points = plain.boundary.points;
        single += plain.isSingleWithUV ? 1 : 0;
        closedSurfaces += plain.oddEdges == 0 && !triangles.empty() ? 1 : 0;
        withEdgesLeft += plain.edgesLeft ? 1 : 0;
        withManyTurns += plain.turns > 3 ? 1 : 0;
        if (!points.empty())
            throughTheStart += std::count(points.begin(), points.end(), points[0]) > 2 ? 1 : 0;
    }
    EXPECT_GT(single, seedCount(100));
    EXPECT_GT(closedSurfaces, 0);
    EXPECT_GT(withEdgesLeft, 100);
    EXPECT_GT(withManyTurns, seedCount(100));
    EXPECT_GT(throughTheStart, 10);
}
