#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include <QuarnScreen/CylinderScreen.h>

#include "Support/GeometryBits.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;

// Radius 1 around the Z axis, a full turn, 2 high.
const CylinderScreen kRound(Point3(), 1.0, -kPi, kPi, 2.0);
// The half of it on the side of +Y.
const CylinderScreen kFarHalf(Point3(), 1.0, -kPi / 2, kPi / 2, 2.0);

void expectHit(const Intersection& hit, const Point3& point, int normalSign) {
    EXPECT_TRUE(sameBits(hit.point, point));
    EXPECT_EQ(hit.normalSign, normalSign);
    EXPECT_FALSE(hit.hasUV);
    EXPECT_TRUE(sameBits(hit.uv, Point2(0.0, 0.0)));
    EXPECT_EQ(hit.triangleIndex, -1);
}

TEST(CylinderScreen, RayThroughTheAxisHitsBothWallsNearestFirst) {
    const IntersectionSet hits = kRound.intersect(Point3(0, -2, 0), Point3(0, 0, 0));
    ASSERT_EQ(hits.count(), 2);
    expectHit(hits.first(), Point3(0, -1, 0), 1);
    expectHit(hits.last(), Point3(0, 1, 0), -1);
}

TEST(CylinderScreen, RayParallelToTheAxisHitsNothing) {
    for (const double x : {0.0, 0.5, 1.0, 2.0}) {
        const Point3 from(x, 0, -5);
        const Point3 to(x, 0, 5);
        EXPECT_TRUE(kRound.intersect(from, to).empty());
        for (const int sign : {-1, 0, 1})
            EXPECT_TRUE(kRound.intersectExtrapolatedWithSpecifiedNormal(from, to, sign).empty());
    }
}

TEST(CylinderScreen, RayFromTheWallInwardsHitsTheFarWallAlone) {
    const IntersectionSet hits = kRound.intersect(Point3(0, -1, 0), Point3(0, 0, 0));
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(0, 1, 0), -1);
}

TEST(CylinderScreen, RayFromTheWallOutwardsHitsNothing) {
    EXPECT_TRUE(kRound.intersect(Point3(0, -1, 0), Point3(0, -2, 0)).empty());
}

TEST(CylinderScreen, RayFromInsideHitsTheFarWallOnce) {
    const IntersectionSet hits = kFarHalf.intersect(Point3(0, 0, 0.5), Point3(0, 0.25, 0.5));
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(0, 1, 0.5), -1);
}

TEST(CylinderScreen, RayFromOutsideThroughTheGapHitsTheFarWallAlone) {
    const IntersectionSet hits = kFarHalf.intersect(Point3(0, -2, 0), Point3(0, 0, 0));
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(0, 1, 0), -1);
}

TEST(CylinderScreen, RayAwayFromTheCylinderHitsNothing) {
    EXPECT_TRUE(kRound.intersect(Point3(0, -2, 0), Point3(0, -3, 0)).empty());
    EXPECT_TRUE(kRound.intersect(Point3(2, -2, 0), Point3(2, 2, 0)).empty());
}

// The segment's length is the unit of the ray's parameter, so it does not matter.
TEST(CylinderScreen, HitsBeforeAndBeyondTheSecondPositionCount) {
    for (const double y : {-1.75, -1.0, 0.0, 6.0})
        EXPECT_EQ(kRound.intersect(Point3(0, -2, 0), Point3(0, y, 0)).count(), 2) << y;
}

TEST(CylinderScreen, ExactTangentGivesOneHitOfNoSide) {
    const Point3 from(-2, 1, 0);
    const Point3 to(2, 1, 0);
    const IntersectionSet hits = kRound.intersect(from, to);
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(0, 1, 0), 0);
    EXPECT_EQ(kRound.intersectExtrapolatedWithSpecifiedNormal(from, to, 0).count(), 1);
    EXPECT_TRUE(kRound.intersectExtrapolatedWithSpecifiedNormal(from, to, 1).empty());
}

TEST(CylinderScreen, TangentBehindTheStartIsNoHit) {
    EXPECT_TRUE(kRound.intersectExtrapolatedWithSpecifiedNormal(Point3(2, 1, 0), Point3(3, 1, 0), 0).empty());
    EXPECT_TRUE(kRound.intersectExtrapolatedWithSpecifiedNormal(Point3(0, 1, 0), Point3(3, 1, 0), 0).empty());
}

TEST(CylinderScreen, NormalSignPicksTheWallWithoutASectionTest) {
    // Far above the section, and through its gap.
    const Point3 from(0, -2, 50);
    const Point3 to(0, 0, 50);
    const IntersectionSet entering = kFarHalf.intersectExtrapolatedWithSpecifiedNormal(from, to, 1);
    const IntersectionSet leaving = kFarHalf.intersectExtrapolatedWithSpecifiedNormal(from, to, -1);
    ASSERT_EQ(entering.count(), 1);
    ASSERT_EQ(leaving.count(), 1);
    expectHit(entering.first(), Point3(0, -1, 50), 1);
    expectHit(leaving.first(), Point3(0, 1, 50), -1);
    for (const int sign : {0, 2, -2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_TRUE(kFarHalf.intersectExtrapolatedWithSpecifiedNormal(from, to, sign).empty()) << sign;
}

// Intended: with a center the direction of the quadratic is to - from + center. Here the true ray
// passes the axis at (3, 0), but the quadratic's direction is (3, 4) from o = (0, -2): 25 t^2 - 16
// t + 3 = 0 has no root.
TEST(CylinderScreen, CentreOffTheAxisLosesHits) {
    const CylinderScreen shifted(Point3(3, 0, 0), 1.0, -kPi, kPi, 2.0);
    EXPECT_TRUE(
        shifted.intersectExtrapolatedWithSpecifiedNormal(Point3(3, -2, 0), Point3(3, 2, 0), 1).empty());
    EXPECT_TRUE(shifted.intersect(Point3(3, -2, 0), Point3(3, 2, 0)).empty());
}

// With the center at y = 2 a ray along +Y from o = (0, -2) has the direction (0, 4) instead of (0,
// 2): the roots are 0.25 and 0.75, half of the true ones, so the hits stop short of the wall and
// are on no section.
TEST(CylinderScreen, CentreOffTheAxisMovesTheHitsOffTheWall) {
    const CylinderScreen shifted(Point3(0, 2, 0), 1.0, -kPi, kPi, 2.0);
    const Point3 from(0, 0, 0);
    const Point3 to(0, 2, 0);
    const IntersectionSet entering = shifted.intersectExtrapolatedWithSpecifiedNormal(from, to, 1);
    ASSERT_EQ(entering.count(), 2);
    expectHit(entering.first(), Point3(0, 0.5, 0), 1);
    expectHit(entering.last(), Point3(0, 1.5, 0), 1);
    EXPECT_TRUE(shifted.intersect(from, to).empty());
}

// Intended: only a difference of exactly minus the center makes the quadratic degenerate, so with a
// center a ray along the wall can hit it.
TEST(CylinderScreen, CentreOffTheAxisLetsARayAlongTheWallHit) {
    const CylinderScreen shifted(Point3(3, 0, 0), 1.0, -kPi, kPi, 8.0);
    const IntersectionSet hits = shifted.intersect(Point3(2, 0, 0), Point3(2, 0, 3));
    ASSERT_EQ(hits.count(), 1);
    EXPECT_TRUE(sameBits(hits.first().point, Point3(2, 0, 2.0 / 3.0 * 3.0)));
    EXPECT_TRUE(
        shifted.intersectExtrapolatedWithSpecifiedNormal(Point3(3, 0, 0), Point3(0, 0, 1), 1).empty());
}

TEST(CylinderScreen, CentreAlongTheAxisChangesNothingButTheHeight) {
    const CylinderScreen raised(Point3(0, 0, 10), 1.0, -kPi, kPi, 2.0);
    EXPECT_EQ(raised.intersect(Point3(0, -2, 10), Point3(0, 0, 10)).count(), 2);
    EXPECT_TRUE(raised.intersect(Point3(0, -2, 0), Point3(0, 0, 0)).empty());
}

TEST(CylinderScreen, RayOfNoLengthGivesHitsAtItsStartOnly) {
    // The quadratic of from == to at the origin of X and Y has no direction; elsewhere neither.
    EXPECT_TRUE(kRound.intersect(Point3(0, -2, 0), Point3(0, -2, 0)).empty());
    // Intended: with a center it has one, and the hit lies at the start.
    const CylinderScreen shifted(Point3(3, 0, 0), 1.0, -kPi, kPi, 8.0);
    const IntersectionSet hits = shifted.intersect(Point3(2, 0, 1), Point3(2, 0, 1));
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(2, 0, 1), 0);
}

TEST(CylinderScreen, NegativeRadiusIsHitLikeItsMagnitude) {
    const CylinderScreen negative(Point3(), -1.0, -kPi, kPi, 2.0);
    EXPECT_EQ(negative.intersectExtrapolatedWithSpecifiedNormal(Point3(0, -2, 0), Point3(), 1).count(), 1);
}

}  // namespace
}  // namespace quarn::test
