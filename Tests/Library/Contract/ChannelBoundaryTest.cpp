#include <gtest/gtest.h>

#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/ScriptedScreen.h"

using namespace quarn::test;

namespace {

using Rays = IScreenGeometry::PointPairs;

// A ray along +Y through (x, 0, z), from the viewer's side.
std::pair<Point3, Point3> rayThrough(double x, double z) {
    return {Point3(x, -1, z), Point3(x, 1, z)};
}

std::pair<Point3, Point3> reversed(const std::pair<Point3, Point3>& ray) {
    return {ray.second, ray.first};
}

// A screen that is hit at the target of a ray, where `hits` says so, and notes the side of each
// query.
class SidedScreen : public ScriptedScreen {
public:
    std::vector<int> sides;

    explicit SidedScreen(const std::function<bool(const Point3&)>& hits) {
        onIntersect = [hits](const Point3& from, const Point3& to) {
            return hits(from) ? IntersectionSet(makeHit(to)) : IntersectionSet();
        };
        onExtrapolated = [this](const Point3&, const Point3& to, int side) {
            sides.push_back(side);
            return IntersectionSet(makeHit(to));
        };
    }
};

}  // namespace

TEST(ChannelBoundary, MissesStillGetPointsOnTheContinuedPlane) {
    const FlatScreen screen(4.0, 3.0);
    const auto points = screen.intersectChannelBoundary({rayThrough(9, 0), rayThrough(1, 1)}, {});
    EXPECT_TRUE(sameBits(points, std::vector{Point3(9, 0, 0), Point3(1, 0, 1)}));
}

TEST(ChannelBoundary, ExtraRayThatHitsUnlocksTheRest) {
    const FlatScreen screen(4.0, 3.0);
    const Rays rays{rayThrough(9, 0), rayThrough(0, 9)};
    EXPECT_TRUE(sameBits(screen.intersectChannelBoundary(rays, {rayThrough(8, 8), rayThrough(0, 0)}),
                         std::vector{Point3(9, 0, 0), Point3(0, 0, 9)}));
}

TEST(ChannelBoundary, NoHitOnTheScreenGivesNothing) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(screen.intersectChannelBoundary({rayThrough(9, 0)}, {rayThrough(0, 9)}).empty());
    EXPECT_TRUE(screen.intersectChannelBoundary({}, {}).empty());
}

TEST(ChannelBoundary, ExtraRaysGiveNoPoints) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(screen.intersectChannelBoundary({}, {rayThrough(0, 0), rayThrough(1, 1)}).empty());
}

TEST(ChannelBoundary, FlatScreenKeepsRaysOfBothSides) {
    const FlatScreen screen(4.0, 3.0);
    const auto points = screen.intersectChannelBoundary({rayThrough(0, 0), reversed(rayThrough(1, 1))}, {});
    EXPECT_TRUE(sameBits(points, std::vector{Point3(0, 0, 0), Point3(1, 0, 1)}));
}

TEST(ChannelBoundary, ParallelRaysAreLeftOut) {
    const FlatScreen screen(4.0, 3.0);
    const auto points = screen.intersectChannelBoundary(
        {rayThrough(0, 0), {Point3(0, -1, 0), Point3(1, -1, 0)}, rayThrough(1, 1)}, {});
    EXPECT_TRUE(sameBits(points, std::vector{Point3(0, 0, 0), Point3(1, 0, 1)}));
}

TEST(ChannelBoundary, FirstHitDecidesAboutTheSide) {
    // Rays whose x is positive hit; the normal is (0, -1, 0), so a ray along +Y shows the side -1.
    SidedScreen screen([](const Point3& from) { return from[0] > 0.0; });
    const Rays rays{rayThrough(-1, 0), reversed(rayThrough(1, 0)), rayThrough(2, 0)};
    EXPECT_EQ(screen.intersectChannelBoundary(rays, {rayThrough(3, 0)}).size(), 3U);
    EXPECT_EQ(screen.sides, (std::vector<int>{1, 1, 1}));
    EXPECT_EQ(screen.calls,
              (std::vector<std::string>{"intersect", "intersect", "getScreenNormal", "intersectExtrapolated",
                                        "intersectExtrapolated", "intersectExtrapolated"}));
}

TEST(ChannelBoundary, RaysComeBeforeExtraRays) {
    SidedScreen screen([](const Point3& from) { return from[0] > 0.0; });
    EXPECT_EQ(screen.intersectChannelBoundary({rayThrough(1, 0)}, {reversed(rayThrough(1, 0))}).size(), 1U);
    EXPECT_EQ(screen.sides, (std::vector<int>{-1}));
    screen.sides.clear();
    EXPECT_EQ(screen.intersectChannelBoundary({rayThrough(-1, 0)}, {reversed(rayThrough(1, 0))}).size(), 1U);
    EXPECT_EQ(screen.sides, (std::vector<int>{1}));
}

TEST(ChannelBoundary, SideComesFromTheNormalAtTheFirstHitAndNotFromItsRecord) {
    ScriptedScreen screen;
    screen.onIntersect = [](const Point3&, const Point3&) {
        return makeHits({makeHit(Point3(5, 0, 0), 17), makeHit(Point3(6, 0, 0), -17)});
    };
    screen.onNormal = [](const Point3& point) {
        return point[0] == 5.0 ? Point3(0, 2, 0) : Point3(0, -2, 0);
    };
    int side = 99;
    screen.onExtrapolated = [&](const Point3&, const Point3&, int asked) {
        side = asked;
        return makeHits({makeHit(Point3(1, 1, 1)), makeHit(Point3(2, 2, 2))});
    };
    EXPECT_TRUE(
        sameBits(screen.intersectChannelBoundary({rayThrough(0, 0)}, {}), std::vector{Point3(1, 1, 1)}));
    EXPECT_EQ(side, 1);
}

TEST(ChannelBoundary, GrazingOrNaNNormalGivesTheSideZero) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const Point3& normal : {Point3(1, 0, 0), Point3(), Point3(nan, nan, nan)}) {
        SidedScreen screen([](const Point3&) { return true; });
        screen.onNormal = [&](const Point3&) { return normal; };
        EXPECT_EQ(screen.intersectChannelBoundary({rayThrough(0, 0)}, {}).size(), 1U);
        EXPECT_EQ(screen.sides, (std::vector<int>{0}));
    }
}

TEST(ChannelBoundary, ScreenThatHonoursTheSideLeavesOutTheOtherOne) {
    const FlatScreen plane(4.0, 3.0);
    ScriptedScreen screen;
    screen.onIntersect = [&](const Point3& from, const Point3& to) { return plane.intersect(from, to); };
    screen.onExtrapolated = [&](const Point3& from, const Point3& to, int side) {
        const auto hits = plane.intersectExtrapolatedWithSpecifiedNormal(from, to, side);
        return !hits.empty() && hits.first().normalSign == side ? hits : IntersectionSet();
    };
    const Rays rays{rayThrough(9, 0), reversed(rayThrough(1, 1)), rayThrough(0, 9)};
    EXPECT_TRUE(sameBits(screen.intersectChannelBoundary(rays, {}), std::vector{Point3(1, 0, 1)}));
    EXPECT_TRUE(sameBits(
        screen.intersectChannelBoundary({rayThrough(9, 0), reversed(rayThrough(8, 0))}, {rayThrough(0, 0)}),
        std::vector{Point3(9, 0, 0)}));
}
