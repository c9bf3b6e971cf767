#include <gtest/gtest.h>

#include <cmath>

#include <QuarnScreen/FlatScreen.h>

#include "Reference/Shapes/ReferenceFlat.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

constexpr int kCases = 20000;

// A screen whose sizes are of any kind, beside its reference.
struct WildPair {
    explicit WildPair(Rng& rng)
        : reference{wildNumber(rng), wildNumber(rng)}, screen(reference.w, reference.h) {}
    ReferenceFlat reference;
    FlatScreen screen;
};

// Ordinary sizes, so that hits fall on the section and beside it.
struct OrdinaryPair {
    explicit OrdinaryPair(Rng& rng)
        : reference{rng.uniform(0.5, 8.0), rng.uniform(0.5, 8.0)}, screen(reference.w, reference.h) {}
    ReferenceFlat reference;
    FlatScreen screen;
};

template <class Pair, class Check>
void forEachPair(int cases, const Check& check) {
    for (int i = 0; i < seedCount(cases); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Pair pair(rng);
        check(pair, rng);
        if (::testing::Test::HasFailure()) return;
    }
}

}  // namespace

TEST(FlatScreenProperty, MapInto2DEqualsTheReference) {
    forEachPair<WildPair>(kCases, [](const WildPair& pair, Rng& rng) {
        const auto point = wildPoint<3>(rng);
        EXPECT_TRUE(sameBits(pair.screen.mapInto2D(point, rng.coin()), pair.reference.uvOf(point)));
    });
}

TEST(FlatScreenProperty, MapInto3DEqualsTheReference) {
    forEachPair<WildPair>(kCases, [](const WildPair& pair, Rng& rng) {
        const auto uv = wildPoint<2>(rng);
        const Point3 expected = pair.reference.positionAt(uv[0], uv[1]);
        Point3 point;
        EXPECT_TRUE(pair.screen.mapInto3D(uv, point, true));
        EXPECT_TRUE(sameBits(point, expected));
        point = Point3(9, 9, 9);
        EXPECT_EQ(pair.screen.mapInto3D(uv, point, false), pair.reference.isOnSection(expected));
        EXPECT_TRUE(sameBits(point, expected));
    });
}

TEST(FlatScreenProperty, SectionTestEqualsTheReference) {
    int on = 0;
    int off = 0;
    forEachPair<WildPair>(kCases, [&](const WildPair& pair, Rng& rng) {
        auto point = wildPoint<3>(rng);
        if (rng.coin()) point[1] = rng.uniform(-2e-6, 2e-6);
        const bool expected = pair.reference.isOnSection(point);
        EXPECT_EQ(pair.screen.isOnScreenSection(point), expected);
        ++(expected ? on : off);
    });
    EXPECT_GT(on, seedCount(kCases / 100));
    EXPECT_GT(off, kCases / 100);
}

TEST(FlatScreenProperty, WildRaysEqualTheReference) {
    forEachPair<WildPair>(kCases, [](const WildPair& pair, Rng& rng) {
        const auto from = wildPoint<3>(rng);
        const auto to = wildPoint<3>(rng);
        EXPECT_TRUE(sameBits(pair.screen.intersect(from, to), asSet(pair.reference.hit(from, to))));
        EXPECT_TRUE(
            sameBits(pair.screen.intersectExtrapolatedWithSpecifiedNormal(from, to, rng.integer(-2, 2)),
                     asSet(pair.reference.planeHit(from, to))));
    });
}

TEST(FlatScreenProperty, OrdinaryRaysEqualTheReference) {
    int hits = 0;
    int misses = 0;
    forEachPair<OrdinaryPair>(kCases, [&](const OrdinaryPair& pair, Rng& rng) {
        const Point3 from = rng.point(-5.0, 5.0);
        Point3 to = rng.point(-5.0, 5.0);
        if (rng.integer(0, 9) == 0) to[1] = from[1] + rng.uniform(-2e-6, 2e-6);
        const auto expected = pair.reference.hit(from, to);
        EXPECT_TRUE(sameBits(pair.screen.intersect(from, to), asSet(expected)));
        ++(expected ? hits : misses);
    });
    EXPECT_GT(hits, seedCount(kCases / 10));
    EXPECT_GT(misses, kCases / 10);
}

TEST(FlatScreenProperty, RaysOfAnyExponentEqualTheReference) {
    forEachPair<WildPair>(kCases, [](const WildPair& pair, Rng& rng) {
        const Point3 from = rng.spreadPoint();
        const Point3 to = rng.spreadPoint();
        EXPECT_TRUE(sameBits(pair.screen.intersectExtrapolatedWithSpecifiedNormal(from, to, 1),
                             asSet(pair.reference.planeHit(from, to))));
    });
}

TEST(FlatScreenProperty, HorizontalSamplesEqualTheReference) {
    forEachPair<WildPair>(kCases / 4, [](const WildPair& pair, Rng& rng) {
        const bool isWild = rng.coin();
        const double v = isWild ? wildNumber(rng) : rng.uniform(-0.2, 1.2);
        const double uStart = isWild ? wildNumber(rng) : rng.uniform(-0.2, 1.2);
        const double uEnd = isWild ? wildNumber(rng) : rng.uniform(-0.2, 1.2);
        const int count = rng.integer(-2, 12);
        const int row = rng.integer(-100, 100);
        for (const bool extrapolate : {false, true}) {
            IScreenGeometry::GridSamples samples;
            pair.screen.sampleHorizontally(v, uStart, uEnd, count, row, samples, extrapolate);
            EXPECT_TRUE(sameBits(samples,
                                 pair.reference.horizontalSamples(v, uStart, uEnd, count, row, extrapolate)));
        }
    });
}

TEST(FlatScreenProperty, CalibrationPointsEqualTheReference) {
    forEachPair<WildPair>(kCases / 4, [](const WildPair& pair, Rng& rng) {
        const int columns = rng.integer(-1, 9);
        const int rows = rng.integer(-1, 9);
        EXPECT_TRUE(sameBits(pair.screen.getDefaultCalibrationPoints(columns, rows),
                             pair.reference.calibrationPoints(columns, rows)));
    });
}

TEST(FlatScreenProperty, ClosestPointAndDistanceEqualTheReference) {
    forEachPair<WildPair>(kCases, [](const WildPair& pair, Rng& rng) {
        const auto point = wildPoint<3>(rng);
        const Point3 closest = pair.reference.closestPoint(point);
        EXPECT_TRUE(sameBits(pair.screen.getClosestPoint(point), closest));
        const double x = point[0] - closest[0];
        const double y = point[1] - closest[1];
        const double z = point[2] - closest[2];
        EXPECT_TRUE(sameBits(pair.screen.getShortestDistance(point), std::sqrt(x * x + y * y + z * z)));
    });
}

TEST(FlatScreenProperty, ClosestIntersectionEqualsTheReference) {
    int found = 0;
    forEachPair<OrdinaryPair>(kCases, [&](const OrdinaryPair& pair, Rng& rng) {
        const bool isWild = rng.integer(0, 3) == 0;
        const Point3 from = isWild ? wildPoint<3>(rng) : rng.point(-3.0, 3.0);
        const Point3 direction = isWild ? wildPoint<3>(rng) : rng.point(-3.0, 3.0);
        const bool extrapolate = rng.coin();
        const auto expected = pair.reference.closestIntersection(from, direction, extrapolate);
        FlatScreen screen = pair.screen;
        Intersection result;
        EXPECT_EQ(ScreenGeometry::getClosestIntersection(from, direction, &screen, result, extrapolate),
                  expected.has_value());
        EXPECT_TRUE(sameBits(result, expected.value_or(Intersection())));
        found += expected.has_value() ? 1 : 0;
    });
    EXPECT_GT(found, seedCount(kCases / 10));
}

TEST(FlatScreenProperty, NominalViewEqualsTheReference) {
    forEachPair<WildPair>(kCases, [](const WildPair& pair, Rng&) {
        const ReferenceFlat& reference = pair.reference;
        const auto corners = reference.corners();
        const double m = reference.longerSide();
        EXPECT_TRUE(sameBits(pair.screen.getEyepoint(), Point3(0.0, -m / 2.0, 0.0)));
        EXPECT_TRUE(
            sameBits(pair.screen.getMaxAngleFromHeading(),
                     std::atan2(std::sqrt(reference.w * reference.w + reference.h * reference.h), m / 2.0)));
        Point3 min;
        Point3 max;
        pair.screen.getBounds(&min, &max);
        EXPECT_TRUE(sameBits(min, Point3(corners[0][0], 0.0, corners[3][2])));
        EXPECT_TRUE(sameBits(max, Point3(corners[3][0], 0.0, corners[0][2])));
        EXPECT_EQ(pair.screen.isValid(), reference.w >= 0.0);

        Point3 viewPoint;
        std::vector<int> indices;
        std::vector<Point3> vertices;
        std::vector<Point3> normals;
        pair.screen.generateGeometry(viewPoint, indices, vertices, normals);
        EXPECT_TRUE(sameBits(viewPoint, reference.viewPoint()));
        EXPECT_TRUE(sameBits(vertices, std::vector(corners.begin(), corners.end())));
    });
}
