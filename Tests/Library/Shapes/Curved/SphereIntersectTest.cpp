#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include <QuarnScreen/SphericalScreen.h>

#include "Support/GeometryBits.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;

// The whole unit sphere around the origin.
const SphericalScreen kWhole(Point3(), 1.0, -kPi, kPi, -kPi / 2, kPi / 2);
// The half of it on the side of +Y.
const SphericalScreen kFarHalf(Point3(), 1.0, -kPi / 2, kPi / 2, -kPi / 2, kPi / 2);

void expectHit(const Intersection& hit, const Point3& point, int normalSign) {
    EXPECT_TRUE(sameBits(hit.point, point));
    EXPECT_EQ(hit.normalSign, normalSign);
    EXPECT_FALSE(hit.hasUV);
    EXPECT_TRUE(sameBits(hit.uv, Point2(0.0, 0.0)));
    EXPECT_EQ(hit.triangleIndex, -1);
}

TEST(SphericalScreen, RayThroughTheCentreHitsBothSidesNearestFirst) {
    const IntersectionSet hits = kWhole.intersect(Point3(0, -2, 0), Point3(0, 5, 0));
    ASSERT_EQ(hits.count(), 2);
    expectHit(hits.first(), Point3(0, -1, 0), 1);
    expectHit(hits.last(), Point3(0, 1, 0), -1);
}

// Intended: unlike on the cylinder, the double root is not joined.
TEST(SphericalScreen, ExactTangentGivesTheSameHitTwice) {
    const Point3 from(-2, 1, 0);
    const Point3 to(2, 1, 0);
    const IntersectionSet hits = kWhole.intersect(from, to);
    ASSERT_EQ(hits.count(), 2);
    expectHit(hits.first(), Point3(0, 1, 0), 0);
    EXPECT_TRUE(sameBits(hits.first(), hits.last()));
    EXPECT_EQ(kWhole.intersectExtrapolatedWithSpecifiedNormal(from, to, 0).count(), 2);
    EXPECT_TRUE(kWhole.intersectExtrapolatedWithSpecifiedNormal(from, to, -1).empty());
}

TEST(SphericalScreen, TangentBehindTheStartIsNoHit) {
    EXPECT_TRUE(kWhole.intersectExtrapolatedWithSpecifiedNormal(Point3(2, 1, 0), Point3(3, 1, 0), 0).empty());
    EXPECT_TRUE(kWhole.intersectExtrapolatedWithSpecifiedNormal(Point3(0, 1, 0), Point3(3, 1, 0), 0).empty());
}

TEST(SphericalScreen, RayOfNoLengthHitsNothing) {
    for (const Point3& point : {Point3(), Point3(0, -1, 0), Point3(0, -2, 0)}) {
        EXPECT_TRUE(kWhole.intersect(point, point).empty());
        for (const int sign : {-1, 0, 1})
            EXPECT_TRUE(kWhole.intersectExtrapolatedWithSpecifiedNormal(point, point, sign).empty());
    }
}

TEST(SphericalScreen, RayFromInsideHitsTheFarSideAloneAsItLeaves) {
    const IntersectionSet hits = kWhole.intersect(Point3(0, 0.5, 0), Point3(0, 0.25, 0));
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(0, -1, 0), -1);
}

TEST(SphericalScreen, RayFromTheSurfaceInwardsDropsItsStart) {
    const IntersectionSet hits = kWhole.intersect(Point3(0, -1, 0), Point3(0, 0, 0));
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(0, 1, 0), -1);
    EXPECT_TRUE(kWhole.intersect(Point3(0, -1, 0), Point3(0, -2, 0)).empty());
}

TEST(SphericalScreen, RayFromOutsideThroughTheGapHitsTheFarSideAlone) {
    const IntersectionSet hits = kFarHalf.intersect(Point3(0, -2, 0), Point3(0, 0, 0));
    ASSERT_EQ(hits.count(), 1);
    expectHit(hits.first(), Point3(0, 1, 0), -1);
}

TEST(SphericalScreen, RayAlongZHitsThePoles) {
    const IntersectionSet hits = kWhole.intersect(Point3(0, 0, -3), Point3(0, 0, 0));
    ASSERT_EQ(hits.count(), 2);
    expectHit(hits.first(), Point3(0, 0, -1), 1);
    expectHit(hits.last(), Point3(0, 0, 1), -1);
}

// The ray is not that of the cylinder: a center moves the hits with it.
TEST(SphericalScreen, CentreMovesTheHits) {
    const SphericalScreen shifted(Point3(3, 2, 1), 1.0, -kPi, kPi, -kPi / 2, kPi / 2);
    const IntersectionSet hits = shifted.intersect(Point3(3, 0, 1), Point3(3, 2, 1));
    ASSERT_EQ(hits.count(), 2);
    expectHit(hits.first(), Point3(3, 1, 1), 1);
    expectHit(hits.last(), Point3(3, 3, 1), -1);
}

TEST(SphericalScreen, NormalSignPicksTheSideWithoutASectionTest) {
    const SphericalScreen dome(Point3(), 1.0, -kPi, kPi, 1.0, kPi / 2);
    const Point3 from(0, -2, 0);
    const Point3 to(0, 0, 0);
    EXPECT_TRUE(dome.intersect(from, to).empty());
    const IntersectionSet entering = dome.intersectExtrapolatedWithSpecifiedNormal(from, to, 1);
    const IntersectionSet leaving = dome.intersectExtrapolatedWithSpecifiedNormal(from, to, -1);
    ASSERT_EQ(entering.count(), 1);
    ASSERT_EQ(leaving.count(), 1);
    expectHit(entering.first(), Point3(0, -1, 0), 1);
    expectHit(leaving.first(), Point3(0, 1, 0), -1);
    for (const int sign : {0, 2, -2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_TRUE(dome.intersectExtrapolatedWithSpecifiedNormal(from, to, sign).empty()) << sign;
}

TEST(SphericalScreen, RaysThatMissHitNothing) {
    EXPECT_TRUE(kWhole.intersect(Point3(0, -2, 0), Point3(0, -3, 0)).empty());
    EXPECT_TRUE(kWhole.intersect(Point3(2, -2, 0), Point3(2, 2, 0)).empty());
}

}  // namespace
}  // namespace quarn::test
