#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/ScriptedScreen.h"
#include "Support/SharedQueries.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

// The UV of a screen's query for its closest point, when it maps the point to `uv`.
Point2 clampedBySearch(const Point2& uv) {
    ScriptedScreen screen;
    Point2 asked(-7, -7);
    screen.onMapInto2D = [&](const Point3& point, bool extrapolate) {
        EXPECT_TRUE(sameBits(point, Point3(1, 2, 3)));
        EXPECT_FALSE(extrapolate);
        return uv;
    };
    screen.onMapInto3D = [&](const Point2& mapped, Point3& point, bool extrapolate) {
        EXPECT_FALSE(extrapolate);
        EXPECT_TRUE(sameBits(point, Point3()));
        asked = mapped;
        return true;
    };
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(1, 2, 3)), Point3()));
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"getClosestPoint", "mapInto2D", "mapInto3D"}));
    return asked;
}

}  // namespace

TEST(ClosestPoint, ClampsBothCoordinatesOfTheUV) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    struct Case {
        double before;
        double after;
    };
    const double belowOne = std::nextafter(1.0, 0.0);
    const double least = std::numeric_limits<double>::denorm_min();
    for (const Case& c :
         {Case{-0.5, 0.0}, Case{-least, 0.0}, Case{0.0, 0.0}, Case{-0.0, -0.0}, Case{0.5, 0.5},
          Case{belowOne, belowOne}, Case{1.0, 1.0}, Case{std::nextafter(1.0, 2.0), 1.0}, Case{9.0, 1.0},
          Case{inf, 1.0}, Case{-inf, 0.0}, Case{nan, nan}}) {
        SCOPED_TRACE(c.before);
        EXPECT_TRUE(sameBits(clampedBySearch(Point2(c.before, 0.25)), Point2(c.after, 0.25)));
        EXPECT_TRUE(sameBits(clampedBySearch(Point2(0.25, c.before)), Point2(0.25, c.after)));
    }
}

TEST(ClosestPoint, AnswerOfMapInto3DIsNotLookedAt) {
    ScriptedScreen screen;
    screen.onMapInto3D = [](const Point2&, Point3& point, bool) {
        point = Point3(4, 5, 6);
        return false;
    };
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3()), Point3(4, 5, 6)));
    screen.onMapInto3D = [](const Point2&, Point3&, bool) { return false; };
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(7, 7, 7)), Point3(0, 0, 0)));
}

TEST(ClosestPoint, ShortestDistanceUsesTheClosestPointOfTheScreen) {
    ScriptedScreen screen;
    screen.onClosestPoint = [](const Point3& point) {
        EXPECT_TRUE(sameBits(point, Point3(3, 5, 9)));
        return Point3(1, 2, 3);
    };
    EXPECT_TRUE(sameBits(screen.getShortestDistance(Point3(3, 5, 9)), 7.0));
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"getClosestPoint"}));
}

TEST(ClosestPoint, ShortestDistanceOverflowsAndUnderflowsAsItsSquares) {
    ScriptedScreen screen;
    screen.onClosestPoint = [](const Point3&) { return Point3(); };
    EXPECT_TRUE(std::isinf(screen.getShortestDistance(Point3(1e200, 0, 0))));
    EXPECT_EQ(screen.getShortestDistance(Point3(1e-200, 0, 0)), 0.0);
    EXPECT_TRUE(std::isnan(screen.getShortestDistance(Point3(std::nan(""), 0, 0))));
}

TEST(ClosestPoint, ShortestDistanceSumsInTheOrderXYZ) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto from = rng.coin() ? wildPoint<3>(rng) : rng.point(-9, 9);
        const auto closest = rng.coin() ? wildPoint<3>(rng) : rng.point(-9, 9);
        ScriptedScreen screen;
        screen.onClosestPoint = [&](const Point3&) { return closest; };
        const double xx = (from[0] - closest[0]) * (from[0] - closest[0]);
        const double yy = (from[1] - closest[1]) * (from[1] - closest[1]);
        const double zz = (from[2] - closest[2]) * (from[2] - closest[2]);
        EXPECT_TRUE(sameBits(screen.getShortestDistance(from), std::sqrt((xx + yy) + zz)));
    }
}

TEST(CenterOfBounds, IsZeroForAFlatScreenAndForAShapeWithoutBounds) {
    EXPECT_TRUE(sameBits(centreOf(FlatScreen(4.0, 3.0)), Point3(0, 0, 0)));
    EXPECT_TRUE(sameBits(centreOf(FlatScreen(0.1, 0.3)), Point3(0, 0, 0)));
    const ScriptedScreen screen;
    EXPECT_TRUE(sameBits(centreOf(screen), Point3(0, 0, 0)));
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"getBounds"}));
}

TEST(CenterOfBounds, BoundsStartAtZeroForTheShape) {
    ScriptedScreen screen;
    screen.onBounds = [](Point3* min, Point3* max) {
        EXPECT_TRUE(sameBits(*min, Point3()));
        EXPECT_TRUE(sameBits(*max, Point3()));
        *max = Point3(2, 4, 6);
    };
    EXPECT_TRUE(sameBits(centreOf(screen), Point3(1, 2, 3)));
}

TEST(CenterOfBounds, BoundsThatAreTurnedOverAddTheAbsoluteWidth) {
    // min (2, ..) and max (-2, ..): |-2 - 2| / 2 + 2, which is beyond both.
    EXPECT_TRUE(sameBits(centreOf(FlatScreen(-4.0, 3.0)), Point3(4, 0, 0)));
    EXPECT_TRUE(sameBits(centreOf(FlatScreen(4.0, -3.0)), Point3(0, 0, 3)));
}

TEST(CenterOfBounds, EqualsTheFormulaForBoundsOfAnyKind) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto low = wildPoint<3>(rng);
        const auto high = wildPoint<3>(rng);
        ScriptedScreen screen;
        screen.onBounds = [&](Point3* min, Point3* max) {
            *min = low;
            *max = high;
        };
        Point3 expected;
        for (std::size_t axis = 0; axis < 3; ++axis)
            expected[axis] = std::fabs(high[axis] - low[axis]) * 0.5 + low[axis];
        EXPECT_TRUE(sameBits(centreOf(screen), expected));
    }
}
