#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/ScriptedScreen.h"

using namespace quarn::test;

namespace {

const Point3 kAhead(0, 1, 0);

// Each search starts from a record whose fields show whether they were written.
Intersection marked() {
    Intersection record;
    record.point = Point3(7, 8, 9);
    record.uv = Point2(5, 6);
    record.triangleIndex = 77;
    record.normalSign = 66;
    return record;
}

// A screen that is hit at fixed places: one list for rays along +Y, one for the others.
class PlacedScreen : public ScriptedScreen {
public:
    PlacedScreen(const std::vector<Intersection>& forward, const std::vector<Intersection>& backward,
                 const Point3& closest) {
        onIntersect = [=](const Point3& from, const Point3& to) {
            return makeHits(to[1] > from[1] ? forward : backward);
        };
        onClosestPoint = [=](const Point3&) { return closest; };
    }
};

// Whether a hit is accepted from the origin, where the screen's closest point is given.
bool isAccepted(const Point3& hit, const Point3& closest) {
    PlacedScreen screen({makeHit(hit)}, {}, closest);
    Intersection result = marked();
    const bool found = ScreenGeometry::getClosestIntersection(Point3(), kAhead, &screen, result, false);
    EXPECT_TRUE(found || sameBits(result, marked()));
    return found;
}

}  // namespace

TEST(ClosestIntersection, DirectionAwayFromAFlatScreenGivesTheForwardHit) {
    FlatScreen screen(4.0, 3.0);
    Intersection result = marked();
    ASSERT_TRUE(
        ScreenGeometry::getClosestIntersection(Point3(1, -2, 0), Point3(0, -1, 0), &screen, result, false));
    EXPECT_TRUE(sameBits(result.point, Point3(1, 0, 0)));
    EXPECT_EQ(result.normalSign, 1);
    EXPECT_TRUE(result.hasUV);
    EXPECT_TRUE(sameBits(result.uv, Point2(0.75, 0.5)));
    EXPECT_EQ(result.triangleIndex, -1);
}

TEST(ClosestIntersection, LengthOfTheDirectionDoesNotMatter) {
    FlatScreen screen(4.0, 3.0);
    for (const double scale : {1e-5, 1.0, 1e12}) {
        Intersection result;
        ASSERT_TRUE(ScreenGeometry::getClosestIntersection(Point3(1, -2, 0), Point3(0, scale, 0), &screen,
                                                           result, false));
        // The rounding of from + direction moves y by less than 1e-10 of itself.
        EXPECT_NEAR(result.point[1], 0.0, 1e-10);
        EXPECT_EQ(result.normalSign, -1);
    }
}

TEST(ClosestIntersection, QueriesForwardFirstAndTheRestOnlyAfterAHit) {
    ScriptedScreen screen;
    std::vector<Point3> targets;
    screen.onIntersect = [&](const Point3& from, const Point3& to) {
        EXPECT_TRUE(sameBits(from, Point3(1, 2, 3)));
        targets.push_back(to);
        return IntersectionSet();
    };
    Intersection result = marked();
    EXPECT_FALSE(
        ScreenGeometry::getClosestIntersection(Point3(1, 2, 3), Point3(10, 20, 30), &screen, result, false));
    EXPECT_TRUE(sameBits(result, marked()));
    EXPECT_TRUE(sameBits(targets, std::vector{Point3(11, 22, 33), Point3(-9, -18, -27)}));
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"intersect", "intersect"}));

    PlacedScreen hit({makeHit(Point3(1, 0, 0))}, {}, Point3(1, 0, 0));
    EXPECT_TRUE(ScreenGeometry::getClosestIntersection(Point3(), kAhead, &hit, result, false));
    EXPECT_EQ(hit.calls,
              (std::vector<std::string>{"intersect", "intersect", "getClosestPoint", "mapInto2D"}));
}

TEST(ClosestIntersection, ExtrapolatesWithTheSignZero) {
    ScriptedScreen screen;
    std::vector<int> signs;
    screen.onExtrapolated = [&](const Point3&, const Point3& to, int sign) {
        signs.push_back(sign);
        return IntersectionSet(makeHit(to));
    };
    screen.onClosestPoint = [](const Point3&) { return kAhead; };
    bool flag = false;
    screen.onMapInto2D = [&](const Point3&, bool extrapolate) {
        flag = extrapolate;
        return Point2(0.25, 0.75);
    };
    Intersection result;
    EXPECT_TRUE(ScreenGeometry::getClosestIntersection(Point3(), kAhead, &screen, result, true));
    EXPECT_EQ(signs, (std::vector<int>{0, 0}));
    EXPECT_TRUE(flag);
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"intersectExtrapolated", "intersectExtrapolated",
                                                      "getClosestPoint", "mapInto2D"}));
}

TEST(ClosestIntersection, NearestHitOfBothSetsWinsWithAllItsFields) {
    Intersection near = makeHit(Point3(0, -2, 0), -1);
    near.triangleIndex = 5;
    near.hasUV = true;
    near.uv = Point2(0.125, 0.375);
    PlacedScreen screen({makeHit(Point3(0, 3, 0)), makeHit(Point3(0, 9, 0))},
                        {makeHit(Point3(0, -4, 0)), near}, Point3(0, 2, 0));
    Intersection result;
    ASSERT_TRUE(ScreenGeometry::getClosestIntersection(Point3(), kAhead, &screen, result, false));
    EXPECT_TRUE(sameBits(result, near));
    EXPECT_EQ(screen.calls.back(), "getClosestPoint");  // a UV that is there is kept
}

TEST(ClosestIntersection, TiesKeepTheEarlierHit) {
    const auto nearestSign = [](const std::vector<Intersection>& forward,
                                const std::vector<Intersection>& backward) {
        PlacedScreen screen(forward, backward, Point3(1, 0, 0));
        Intersection result;
        EXPECT_TRUE(ScreenGeometry::getClosestIntersection(Point3(), kAhead, &screen, result, false));
        return result.normalSign;
    };
    const Intersection first = makeHit(Point3(0, 1, 0), 1);
    const Intersection second = makeHit(Point3(0, -1, 0), -1);
    const Intersection third = makeHit(Point3(1, 0, 0), 0);
    EXPECT_EQ(nearestSign({first, second}, {third}), 1);
    EXPECT_EQ(nearestSign({second, first}, {third}), -1);
    EXPECT_EQ(nearestSign({third}, {first}), 0);
    EXPECT_EQ(nearestSign({}, {second, first}), -1);
}

TEST(ClosestIntersection, HitThatEqualsTheDefaultIsNone) {
    const auto isFoundAtZero = [](const Intersection& hit) {
        PlacedScreen screen({hit}, {}, Point3());
        Intersection result;
        return ScreenGeometry::getClosestIntersection(Point3(), kAhead, &screen, result, false);
    };
    EXPECT_FALSE(isFoundAtZero(makeHit(Point3(), 0)));
    EXPECT_FALSE(isFoundAtZero(makeHit(Point3(-0.0, -0.0, -0.0), 0)));
    EXPECT_TRUE(isFoundAtZero(makeHit(Point3(), 1)));
    EXPECT_TRUE(isFoundAtZero(makeHit(Point3(0, 1e-300, 0), 0)));
    Intersection hit = makeHit(Point3(), 0);
    hit.hasUV = true;
    EXPECT_TRUE(isFoundAtZero(hit));
    hit = makeHit(Point3(), 0);
    hit.triangleIndex = 0;
    EXPECT_TRUE(isFoundAtZero(hit));
    hit = makeHit(Point3(), 0);
    hit.uv = Point2(0, 1);
    EXPECT_TRUE(isFoundAtZero(hit));
}

TEST(ClosestIntersection, DefaultHitThatIsNearestHidesTheOthers) {
    PlacedScreen screen({makeHit(Point3(), 0), makeHit(Point3(0, 1e-4, 0))}, {}, Point3());
    Intersection result = marked();
    EXPECT_FALSE(ScreenGeometry::getClosestIntersection(Point3(), kAhead, &screen, result, false));
    EXPECT_TRUE(sameBits(result, marked()));
}

TEST(ClosestIntersection, FromTheSurfaceOnlyHitsWithinAThousandthCount) {
    EXPECT_TRUE(isAccepted(Point3(0.99e-3, 0, 0), Point3()));
    EXPECT_TRUE(isAccepted(Point3(std::nextafter(1e-3, 0.0), 0, 0), Point3()));
    // 1e-3 squared is 1e-6 exactly, and the comparison is strict.
    EXPECT_FALSE(isAccepted(Point3(1e-3, 0, 0), Point3()));
    EXPECT_FALSE(isAccepted(Point3(1.01e-3, 0, 0), Point3()));
}

TEST(ClosestIntersection, HitMayLieSqrtThreeTimesAsFarAsTheClosestPoint) {
    const Point3 closest(1, 0, 0);
    EXPECT_TRUE(isAccepted(Point3(1, 1, 1), closest));
    // 1 + 1 + (1 + 0.5e-6)^2 is the limit 3 + 1e-6, except for 2.5e-13.
    EXPECT_TRUE(isAccepted(Point3(1, 1, 1 + 0.4999e-6), closest));
    EXPECT_FALSE(isAccepted(Point3(1, 1, 1 + 0.5001e-6), closest));
    EXPECT_FALSE(isAccepted(Point3(1, 1, 1.01), closest));
}

TEST(ClosestIntersection, GlancingHitFarAlongAFlatScreenIsRefused) {
    FlatScreen screen(4.0, 3.0);
    Intersection result = marked();
    EXPECT_FALSE(ScreenGeometry::getClosestIntersection(Point3(0, -0.1, 0), Point3(1, 0.1, 0), &screen,
                                                        result, false));
    EXPECT_TRUE(sameBits(result, marked()));
    EXPECT_TRUE(
        ScreenGeometry::getClosestIntersection(Point3(0, -0.1, 0), Point3(1, 1, 0), &screen, result, false));
}

TEST(ClosestIntersection, FromTheSurfaceOfAFlatScreenFindsItself) {
    FlatScreen screen(4.0, 3.0);
    Intersection result;
    ASSERT_TRUE(ScreenGeometry::getClosestIntersection(Point3(1, 0, 1), kAhead, &screen, result, false));
    EXPECT_TRUE(sameBits(result.point, Point3(1, 0, 1)));
}

TEST(ClosestIntersection, FlatScreenExtrapolatesBeyondItsSection) {
    FlatScreen screen(4.0, 3.0);
    Intersection result = marked();
    EXPECT_FALSE(ScreenGeometry::getClosestIntersection(Point3(4, -9, 0), kAhead, &screen, result, false));
    EXPECT_TRUE(sameBits(result, marked()));
    ASSERT_TRUE(ScreenGeometry::getClosestIntersection(Point3(4, -9, 0), kAhead, &screen, result, true));
    EXPECT_TRUE(sameBits(result.point, Point3(4, 0, 0)));
    EXPECT_TRUE(sameBits(result.uv, Point2(1.5, 0.5)));
}

TEST(ClosestIntersection, HitsAtNaNOrBeyondTheLargestNumberAreNeverTaken) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double greatest = std::numeric_limits<double>::max();
    EXPECT_FALSE(isAccepted(Point3(nan, 1, 1), Point3(1, 0, 0)));
    EXPECT_FALSE(isAccepted(Point3(greatest, 0, 0), Point3(greatest, 0, 0)));
    EXPECT_FALSE(isAccepted(Point3(1, 0, 0), Point3(nan, 0, 0)));
    // An infinite distance of the closest point accepts every finite hit.
    EXPECT_TRUE(isAccepted(Point3(1e150, 0, 0), Point3(greatest, 0, 0)));
    PlacedScreen screen({makeHit(Point3(nan, 0, 0)), makeHit(Point3(0, 2, 0))}, {makeHit(Point3(nan, 0, 0))},
                        Point3(0, 2, 0));
    Intersection result;
    ASSERT_TRUE(ScreenGeometry::getClosestIntersection(Point3(), kAhead, &screen, result, false));
    EXPECT_TRUE(sameBits(result.point, Point3(0, 2, 0)));
}

TEST(ClosestIntersection, HitWhoseSquaredDistanceIsTheLargestNumberIsNotTaken) {
    const double greatest = std::numeric_limits<double>::max();
    const Point3 beyond(1e300, 0, 0);  // its squared distance is infinite, so that it refuses nothing
    const double x = std::nextafter(std::sqrt(greatest), 0.0);
    const double y = std::sqrt(greatest - x * x);
    ASSERT_EQ(x * x + y * y, greatest);
    EXPECT_FALSE(isAccepted(Point3(x, y, 0), beyond));
    EXPECT_TRUE(isAccepted(Point3(x, 0, 0), beyond));
}

TEST(ClosestIntersection, ResultMayBeTheRecordThatThePositionStandsIn) {
    FlatScreen screen(4.0, 3.0);
    Intersection record;
    record.point = Point3(1, -2, 0);
    ASSERT_TRUE(ScreenGeometry::getClosestIntersection(record.point, kAhead, &screen, record, false));
    EXPECT_TRUE(sameBits(record.point, Point3(1, 0, 0)));
}
