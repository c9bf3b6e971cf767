#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/GeometryBits.h"
#include "Support/Rng.h"

using namespace quarn::test;

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

Point3 positionAt(const FlatScreen& screen, double u, double v) {
    Point3 point;
    EXPECT_TRUE(screen.mapInto3D(Point2(u, v), point, true));
    return point;
}

}  // namespace

TEST(FlatScreenMapping, CornersOfTheUnitSquareAreCornersOfTheRectangle) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(sameBits(positionAt(screen, 0, 0), Point3(-2, 0, 1.5)));
    EXPECT_TRUE(sameBits(positionAt(screen, 1, 0), Point3(2, 0, 1.5)));
    EXPECT_TRUE(sameBits(positionAt(screen, 0, 1), Point3(-2, 0, -1.5)));
    EXPECT_TRUE(sameBits(positionAt(screen, 1, 1), Point3(2, 0, -1.5)));
    EXPECT_TRUE(sameBits(screen.mapInto2D(Point3(-2, 0, 1.5), false), Point2(0, 0)));
    EXPECT_TRUE(sameBits(screen.mapInto2D(Point3(2, 0, -1.5), false), Point2(1, 1)));
}

TEST(FlatScreenMapping, UBeyondTheScreenWritesThePointAndAnswersFalse) {
    const FlatScreen screen(4.0, 3.0);
    Point3 point(9, 9, 9);
    EXPECT_FALSE(screen.mapInto3D(Point2(2.0, 0.5), point, IScreenGeometry::kNoExtrapolation));
    EXPECT_TRUE(sameBits(point, Point3(6, 0, 0)));
}

TEST(FlatScreenMapping, UBeyondTheScreenAnswersTrueWhereExtrapolationIsWanted) {
    const FlatScreen screen(4.0, 3.0);
    Point3 point(9, 9, 9);
    EXPECT_TRUE(screen.mapInto3D(Point2(2.0, 0.5), point, true));
    EXPECT_TRUE(sameBits(point, Point3(6, 0, 0)));
}

TEST(FlatScreenMapping, MapInto3DAnswersByThePositionAndItsTolerance) {
    const FlatScreen screen(1.0, 1.0);
    Point3 point;
    EXPECT_TRUE(screen.mapInto3D(Point2(1.0 + 0.99e-6, 0.5), point, false));
    EXPECT_FALSE(screen.mapInto3D(Point2(1.0 + 1.01e-6, 0.5), point, false));
    EXPECT_TRUE(screen.mapInto3D(Point2(0.5, -0.99e-6), point, false));
    EXPECT_FALSE(screen.mapInto3D(Point2(0.5, -1.01e-6), point, false));
}

TEST(FlatScreenMapping, MapInto2DIgnoresTheFlagAndYAndDoesNotClamp) {
    const FlatScreen screen(4.0, 3.0);
    for (const bool extrapolate : {false, true}) {
        EXPECT_TRUE(sameBits(screen.mapInto2D(Point3(6, 0, 0), extrapolate), Point2(2, 0.5)));
        EXPECT_TRUE(sameBits(screen.mapInto2D(Point3(-4, 1e300, 3), extrapolate), Point2(-0.5, -0.5)));
    }
}

TEST(FlatScreenMapping, ScreenWithoutSizeGivesNaNAndInfinity) {
    const double inf = std::numeric_limits<double>::infinity();
    const FlatScreen screen(0.0, 0.0);
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(sameBits(screen.mapInto2D(Point3(1, 0, 1), false), Point2(inf, -inf)));
    EXPECT_TRUE(std::isnan(screen.mapInto2D(Point3(), false)[0]));
    EXPECT_TRUE(std::isnan(screen.mapInto2D(Point3(), false)[1]));
}

TEST(FlatScreenMapping, MapInto2DIsInverseOfMapInto3DInsideTheSection) {
    // Position: half an epsilon for the product and a quarter for the sum, of the size. UV: half an
    // epsilon each for the sum and the quotient.
    constexpr double kTolerance = 2.0 * kEpsilon;
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double w = std::abs(rng.spread(-300, 300));
        const double h = std::abs(rng.spread(-300, 300));
        const FlatScreen screen(w, h);
        const Point2 uv{rng.uniform(0.0, 1.0), rng.uniform(0.0, 1.0)};
        const Point2 back = screen.mapInto2D(positionAt(screen, uv[0], uv[1]), false);
        EXPECT_NEAR(back[0], uv[0], kTolerance);
        EXPECT_NEAR(back[1], uv[1], kTolerance);
    }
}

TEST(FlatScreenMapping, ClosestPointIsTheNearestOfTheRectangle) {
    // Of the size: an epsilon from the UV, half from the product and a quarter from the sum.
    constexpr double kTolerance = 2.0 * kEpsilon;
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double w = rng.uniform(0.1, 20.0);
        const double h = rng.uniform(0.1, 20.0);
        const FlatScreen screen(w, h);
        const Point3 point = rng.point(-20.0, 20.0);
        const Point3 closest = screen.getClosestPoint(point);
        EXPECT_NEAR(closest[0], std::clamp(point[0], -w / 2, w / 2), kTolerance * w);
        EXPECT_EQ(closest[1], 0.0);
        EXPECT_NEAR(closest[2], std::clamp(point[2], -h / 2, h / 2), kTolerance * h);
        EXPECT_TRUE(screen.isOnScreenSection(closest));
    }
}

TEST(FlatScreenMapping, ClosestPointFarOffTheSectionLiesOnItsEdge) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(1e6, 5, 0.75)), Point3(2, 0, 0.75)));
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(1, 5, -1e300)), Point3(1, 0, -1.5)));
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(-1e300, 0, 1e300)), Point3(-2, 0, 1.5)));
}

TEST(FlatScreenMapping, ClosestPointBeyondTheLeftEdgeIsOnItAtTheSameHeight) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(-7, -3, 0.375)), Point3(-2, 0, 0.375)));
}

TEST(FlatScreenMapping, ClosestPointOfNaNIsNaN) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const FlatScreen screen(4.0, 3.0);
    // A NaN in u or v reaches every coordinate through its product with an edge.
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(nan, 0, 0)), Point3(nan, nan, nan)));
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(0, 0, nan)), Point3(nan, nan, nan)));
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(0, nan, 0)), Point3(0, 0, 0)));
    EXPECT_TRUE(sameBits(FlatScreen(0.0, 3.0).getClosestPoint(Point3()), Point3(nan, nan, nan)));
}

TEST(FlatScreenMapping, ShortestDistanceIsTheLengthToTheRectangle) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(sameBits(screen.getShortestDistance(Point3(0, -7, 0)), 7.0));
    EXPECT_TRUE(sameBits(screen.getShortestDistance(Point3(1, 0, 1)), 0.0));
    // 2 beyond the right edge, 3 in front, 6 above the top edge.
    EXPECT_TRUE(sameBits(screen.getShortestDistance(Point3(4, -3, 7.5)), 7.0));
}
