// Every operation against the reference implementation, bit for bit.
#include "Library/Shapes/Curved/CurvedCases.h"

namespace quarn::test {
namespace {

constexpr int kCases = 20000;
constexpr int kSlowCases = 60;  // of operations that give thousands of positions

template <class Case>
class CurvedReferenceTest : public CurvedTest<Case> {};
TYPED_TEST_SUITE(CurvedReferenceTest, CurvedShapes, CurvedNames);

TYPED_TEST(CurvedReferenceTest, NormalIsTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng& rng) {
        Point3 point = pointNear(reference, rng);
        if (rng.integer(0, 9) == 0) {
            point = Point3(reference.cx, reference.cy, reference.cz);
            point[0] += rng.uniform(-2e-6, 2e-6);
        }
        EXPECT_TRUE(sameBits(screen.getScreenNormal(point), reference.normalAt(point)));
    });
}

TYPED_TEST(CurvedReferenceTest, MapInto2DIsTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng& rng) {
        const Point3 point = pointNear(reference, rng);
        EXPECT_TRUE(sameBits(screen.mapInto2D(point, false), reference.uvOf(point)));
        EXPECT_TRUE(sameBits(screen.mapInto2D(point, true), reference.uvOf(point)));
    });
}

TYPED_TEST(CurvedReferenceTest, MapInto3DIsTheSame) {
    int on = 0;
    int off = 0;
    this->forEachScreen(kCases, [&](const auto& reference, const auto& screen, Rng& rng) {
        const Point2 uv = uvNear(rng);
        const Point3 expected = reference.positionAt(uv[0], uv[1]);
        Point3 point(9, 9, 9);
        EXPECT_TRUE(screen.mapInto3D(uv, point, true));
        EXPECT_TRUE(sameBits(point, expected));
        point = Point3(9, 9, 9);
        const bool isOn = reference.isOnSection(expected);
        EXPECT_EQ(screen.mapInto3D(uv, point, false), isOn);
        EXPECT_TRUE(sameBits(point, expected));
        ++(isOn ? on : off);
    });
    EXPECT_GT(on, kCases / 20);
    EXPECT_GT(off, kCases / 20);
}

TYPED_TEST(CurvedReferenceTest, SectionTestIsTheSame) {
    int on = 0;
    int off = 0;
    this->forEachScreen(2 * kCases, [&](const auto& reference, const auto& screen, Rng& rng) {
        const Point3 point = pointNear(reference, rng);
        const bool isOn = reference.isOnSection(point);
        EXPECT_EQ(screen.isOnScreenSection(point), isOn);
        ++(isOn ? on : off);
    });
    EXPECT_GT(on, kCases / 10);
    EXPECT_GT(off, kCases / 10);
}

TYPED_TEST(CurvedReferenceTest, WildRaysHitTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng& rng) {
        const auto from = wildPoint<3>(rng);
        const auto to = wildPoint<3>(rng);
        EXPECT_TRUE(sameBits(screen.intersect(from, to), reference.hits(from, to)));
        const int sign = rng.integer(-2, 2);
        EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign),
                             reference.hitsOfSide(from, to, sign)));
    });
}

TYPED_TEST(CurvedReferenceTest, UsualRaysHitTheSame) {
    int counts[3] = {0, 0, 0};
    int sides[3] = {0, 0, 0};
    this->forEachUsualScreen(2 * kCases, [&](const auto& reference, const auto& screen, Rng& rng) {
        const Point3 from = rng.point(-9.0, 9.0);
        const Point3 to = rng.coin() ? reference.positionAt(rng.uniform(-0.2, 1.2), rng.uniform(-0.2, 1.2))
                                     : rng.point(-9.0, 9.0);
        const IntersectionSet expected = reference.hits(from, to);
        EXPECT_TRUE(sameBits(screen.intersect(from, to), expected));
        ++counts[expected.count()];
        for (const int sign : {-1, 0, 1}) {
            const IntersectionSet ofSide = reference.hitsOfSide(from, to, sign);
            EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign), ofSide));
            sides[sign + 1] += ofSide.count();
        }
        EXPECT_TRUE(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, rng.coin() ? 2 : -2).empty());
    });
    for (const int count : counts) EXPECT_GT(count, kCases / 100);
    EXPECT_GT(sides[0], kCases / 10);
    EXPECT_GT(sides[2], kCases / 10);
}

TYPED_TEST(CurvedReferenceTest, RaysOfAnyExponentHitTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng& rng) {
        const Point3 from = rng.spreadPoint();
        const Point3 to = rng.spreadPoint();
        for (const int sign : {-1, 0, 1})
            EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign),
                                 reference.hitsOfSide(from, to, sign)));
    });
}

TYPED_TEST(CurvedReferenceTest, HorizontalSamplesAreTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng& rng) {
        const Point2 start = uvNear(rng);
        const double uEnd = uvNear(rng)[0];
        for (const bool extrapolate : {false, true}) {
            const GridRow row{start[1], start[0], uEnd, rng.integer(-2, 12), rng.integer(-9, 9), extrapolate};
            Samples samples;
            screen.sampleHorizontally(row.v, row.uStart, row.uEnd, row.count, row.row, samples, extrapolate);
            EXPECT_TRUE(sameBits(samples, reference.samples(row)));
        }
    });
}

TYPED_TEST(CurvedReferenceTest, CalibrationPointsAreTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng& rng) {
        const int columns = rng.integer(-1, 6);
        const int rows = rng.integer(-1, 6);
        EXPECT_TRUE(sameBits(screen.getDefaultCalibrationPoints(columns, rows),
                             reference.calibrationPoints(columns, rows)));
    });
}

TYPED_TEST(CurvedReferenceTest, ClosestPointAndDistanceAreTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng& rng) {
        const Point3 point = rng.coin() ? pointNear(reference, rng) : rng.point(-9.0, 9.0);
        const Point3 closest = reference.closestPoint(point);
        EXPECT_TRUE(sameBits(screen.getClosestPoint(point), closest));
        const double x = point[0] - closest[0];
        const double y = point[1] - closest[1];
        const double z = point[2] - closest[2];
        EXPECT_TRUE(sameBits(screen.getShortestDistance(point), std::sqrt(x * x + y * y + z * z)));
    });
}

TYPED_TEST(CurvedReferenceTest, ClosestIntersectionIsTheSame) {
    int found = 0;
    this->forEachScreen(2 * kCases, [&](const auto& reference, auto screen, Rng& rng) {
        const bool isWild = rng.integer(0, 3) == 0;
        const Point3 from = isWild ? wildPoint<3>(rng) : rng.point(-3.0, 3.0);
        const Point3 direction = isWild ? wildPoint<3>(rng) : rng.point(-3.0, 3.0);
        const bool extrapolate = rng.integer(0, 3) == 0;
        const auto expected = reference.closestIntersection(from, direction, extrapolate);
        Intersection result;
        EXPECT_EQ(ScreenGeometry::getClosestIntersection(from, direction, &screen, result, extrapolate),
                  expected.has_value());
        EXPECT_TRUE(sameBits(result, expected.value_or(Intersection())));
        found += expected.has_value() ? 1 : 0;
    });
    EXPECT_GT(found, kCases / 100);
}

TYPED_TEST(CurvedReferenceTest, HeadingAngleAndValidityAreTheSame) {
    this->forEachScreen(kCases, [](const auto& reference, const auto& screen, Rng&) {
        EXPECT_TRUE(sameBits(screen.getCenterOfScreenHeading(), reference.heading()));
        EXPECT_TRUE(sameBits(screen.getMaxAngleFromHeading(), reference.maxAngle()));
        EXPECT_TRUE(sameBits(screen.getEyepoint(), Point3(0.0, 0.0, 0.0)));
        EXPECT_EQ(screen.isValid(), reference.radius >= 0.0);
    });
}

TYPED_TEST(CurvedReferenceTest, OutlineIsTheSame) {
    this->forEachScreen(kCases / 2, [](const auto& reference, const auto& screen, Rng&) {
        Outline outline;
        screen.sampleBoundary(outline);
        EXPECT_TRUE(sameBits(outline, reference.outline()));
    });
}

TYPED_TEST(CurvedReferenceTest, DisplayGeometryIsTheSame) {
    this->forEachScreen(kSlowCases, [](const auto& reference, const auto& screen, Rng&) {
        const DisplayGeometry expected = reference.displayGeometry();
        DisplayGeometry display;
        screen.generateGeometry(display.viewPoint, display.indices, display.vertices, display.normals);
        EXPECT_TRUE(sameBits(display.viewPoint, expected.viewPoint));
        EXPECT_EQ(display.indices, expected.indices);
        EXPECT_TRUE(sameBits(display.vertices, expected.vertices));
        EXPECT_TRUE(sameBits(display.normals, expected.normals));
    });
}

}  // namespace
}  // namespace quarn::test
