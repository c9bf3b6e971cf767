#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/GeometryBits.h"
#include "Support/Rng.h"

using namespace quarn::test;

namespace {

constexpr double kTolerance = 1e-6;

bool isHit(const FlatScreen& screen, const Point3& from, const Point3& to) {
    const bool hit = !screen.intersect(from, to).empty();
    EXPECT_LE(screen.intersect(from, to).count(), 1);
    return hit;
}

// A screen whose section and normal are another class's matter.
class OverridingScreen : public FlatScreen {
public:
    using FlatScreen::FlatScreen;
    [[nodiscard]] bool isOnScreenSection(const Point3& point) const override { return point[0] > 10.0; }
    [[nodiscard]] Point3 getScreenNormal(const Point3& point) const override {
        return point[0] > 20.0 ? Point3(0, 1, 0) : Point3(1, 0, 0);
    }
};

}  // namespace

TEST(FlatScreenIntersect, HitCarriesItsPositionAndSideAndNothingElse) {
    const FlatScreen screen(4.0, 3.0);
    const IntersectionSet hits = screen.intersect(Point3(1, -2, 0.5), Point3(1, -1, 0.5));
    ASSERT_EQ(hits.count(), 1);
    Intersection expected;
    expected.point = Point3(1, 0, 0.5);
    expected.normalSign = -1;
    EXPECT_TRUE(sameBits(hits.first(), expected));
}

TEST(FlatScreenIntersect, SideIsMeasuredAlongTheRay) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_EQ(screen.intersect(Point3(0, -2, 0), Point3(0, 2, 0)).first().normalSign, -1);
    EXPECT_EQ(screen.intersect(Point3(0, 2, 0), Point3(0, -2, 0)).first().normalSign, 1);
}

TEST(FlatScreenIntersect, RayPointingAwayHitsBehindItsStart) {
    const FlatScreen screen(4.0, 3.0);
    const IntersectionSet hits = screen.intersect(Point3(0.5, -1, 0.25), Point3(0.5, -2, 0.25));
    ASSERT_EQ(hits.count(), 1);
    EXPECT_TRUE(sameBits(hits.first().point, Point3(0.5, 0, 0.25)));
    EXPECT_EQ(hits.first().normalSign, 1);
    EXPECT_TRUE(screen.intersect(Point3(2.5, -1, 0), Point3(2.5, -2, 0)).empty());
}

TEST(FlatScreenIntersect, RayAlongThePlaneGivesNoHit) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_FALSE(isHit(screen, Point3(0, 0, 0), Point3(1, 0, 0)));
    EXPECT_FALSE(isHit(screen, Point3(0, 0, 0), Point3(1, 5e-7, 0)));
    EXPECT_FALSE(isHit(screen, Point3(0, 0, 0), Point3(1, -5e-7, 0)));
    EXPECT_TRUE(screen.intersectExtrapolatedWithSpecifiedNormal(Point3(), Point3(1, 5e-7, 0), 0).empty());
}

TEST(FlatScreenIntersect, ParallelToleranceIsPinnedOnBothSides) {
    const FlatScreen screen(4.0, 3.0);
    for (const double sign : {1.0, -1.0}) {
        EXPECT_FALSE(isHit(screen, Point3(), Point3(0, sign * 0.99 * kTolerance, 0)));
        EXPECT_FALSE(isHit(screen, Point3(), Point3(0, sign * std::nextafter(kTolerance, 0.0), 0)));
        EXPECT_TRUE(isHit(screen, Point3(), Point3(0, sign * kTolerance, 0)));
        EXPECT_TRUE(isHit(screen, Point3(), Point3(0, sign * 1.01 * kTolerance, 0)));
    }
}

TEST(FlatScreenIntersect, HitJustOutsideTheRightEdgeIsOnTheSection) {
    const FlatScreen screen(4.0, 3.0);
    const double x = 2.0 + 1e-7;
    EXPECT_TRUE(isHit(screen, Point3(x, -1, 0), Point3(x, 1, 0)));
}

TEST(FlatScreenIntersect, SectionToleranceIsPinnedOnBothSidesOfEveryEdge) {
    constexpr double kHalfWidth = 2.0;
    constexpr double kHalfHeight = 1.5;
    constexpr double kNone = 0.0;
    const FlatScreen screen(2.0 * kHalfWidth, 2.0 * kHalfHeight);
    struct Edge {
        std::size_t axis;
        double limit;
    };
    for (const Edge edge : {Edge{0, kHalfWidth}, Edge{1, kNone}, Edge{2, kHalfHeight}}) {
        for (const double sign : {1.0, -1.0}) {
            SCOPED_TRACE(::testing::Message() << "axis " << edge.axis << " sign " << sign);
            const auto isOnSectionAt = [&](double distance) {
                Point3 point;
                point[edge.axis] = sign * distance;
                return screen.isOnScreenSection(point);
            };
            const double last = edge.limit + kTolerance;
            EXPECT_TRUE(isOnSectionAt(edge.limit + 0.99 * kTolerance));
            EXPECT_TRUE(isOnSectionAt(last));
            EXPECT_FALSE(isOnSectionAt(std::nextafter(last, 10.0)));
            EXPECT_FALSE(isOnSectionAt(edge.limit + 1.01 * kTolerance));
        }
    }
}

TEST(FlatScreenIntersect, ScreenOfNegativeSizeHoldsNothing) {
    EXPECT_FALSE(FlatScreen().isOnScreenSection(Point3()));
    EXPECT_FALSE(FlatScreen(4.0, -3.0).isOnScreenSection(Point3()));
    EXPECT_TRUE(FlatScreen(0.0, 0.0).isOnScreenSection(Point3()));
    // Less than twice the tolerance below zero still holds the center.
    EXPECT_TRUE(FlatScreen(-1e-6, -1e-6).isOnScreenSection(Point3()));
}

TEST(FlatScreenIntersect, NaNLiesOnTheSection) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(screen.isOnScreenSection(Point3(nan, nan, nan)));
    EXPECT_FALSE(screen.isOnScreenSection(Point3(nan, 1.0, nan)));
    EXPECT_TRUE(FlatScreen(nan, nan).isOnScreenSection(Point3(5, 0, 5)));
}

TEST(FlatScreenIntersect, NaNAndInfinityBesideYCarryThroughToTheHit) {
    const FlatScreen screen(4.0, 3.0);
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double odd : {inf, -inf, nan}) {
        for (const std::size_t axis : {std::size_t{0}, std::size_t{2}}) {
            Point3 to(0, 1, 0);
            to[axis] = odd;
            // y alone would give a hit at a finite height with side -1.
            const IntersectionSet hits =
                screen.intersectExtrapolatedWithSpecifiedNormal(Point3(0, -1, 0), to, 0);
            ASSERT_EQ(hits.count(), 1);
            EXPECT_TRUE(sameBits(hits.first().point, Point3(nan, nan, nan)));
            EXPECT_EQ(hits.first().normalSign, 0);
        }
    }
    // Even along the plane: NaN is not less than the tolerance.
    EXPECT_EQ(screen.intersect(Point3(), Point3(nan, 0, 0)).count(), 1);
}

TEST(FlatScreenIntersect, NormalSignDoesNotFilter) {
    const FlatScreen screen(4.0, 3.0);
    const Point3 from(9, -1, 9);
    const Point3 to(9, 1, 9);
    EXPECT_FALSE(isHit(screen, from, to));
    for (const int sign : {-1, 0, 1, 17, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const auto hits = screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign);
        ASSERT_EQ(hits.count(), 1);
        EXPECT_TRUE(sameBits(hits.first().point, Point3(9, 0, 9)));
        EXPECT_EQ(hits.first().normalSign, -1);
    }
}

TEST(FlatScreenIntersect, DerivedClassDecidesAboutSectionAndNormal) {
    const OverridingScreen screen(4.0, 3.0);
    EXPECT_FALSE(isHit(screen, Point3(0, -1, 0), Point3(0, 1, 0)));
    const IntersectionSet hits = screen.intersect(Point3(30, -1, 0), Point3(30, 1, 0));
    ASSERT_EQ(hits.count(), 1);
    EXPECT_EQ(hits.first().normalSign, 1);
    EXPECT_EQ(screen.intersect(Point3(15, -1, 0), Point3(15, 1, 0)).first().normalSign, 0);

    Point3 point;
    EXPECT_FALSE(screen.mapInto3D(Point2(0.5, 0.5), point, false));
    EXPECT_TRUE(screen.mapInto3D(Point2(9.0, 9.0), point, false));
}

TEST(FlatScreenIntersect, HitIsWhereTheLineCrossesThePlane) {
    const FlatScreen screen(1.0, 1.0);
    constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Point3 from = rng.point(-10.0, 10.0);
        const Point3 to = rng.point(-10.0, 10.0);
        if (std::abs(to[1] - from[1]) < 1e-3) from[1] = to[1] + 1.0;
        const auto hits = screen.intersectExtrapolatedWithSpecifiedNormal(from, to, 0);
        ASSERT_EQ(hits.count(), 1);
        const long double t = from[1] / (static_cast<long double>(from[1]) - to[1]);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const long double way = t * (static_cast<long double>(to[axis]) - from[axis]);
            const long double exact = from[axis] + way;
            // Half an epsilon of the way for each of the two differences, the quotient and the
            // product, half an epsilon of the result for the sum; all of it twice.
            const long double tolerance = kEpsilon * (4.0L * std::abs(way) + std::abs(exact));
            EXPECT_LE(std::abs(hits.first().point[axis] - exact), tolerance);
        }
        EXPECT_EQ(hits.first().normalSign, to[1] > from[1] ? -1 : 1);
    }
}
