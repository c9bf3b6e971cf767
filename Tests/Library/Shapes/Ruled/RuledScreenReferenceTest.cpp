// Each operation of a ruled screen against the reference implementation, bit for bit.
#include <gtest/gtest.h>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/LogCapture.h"

using namespace quarn::test;

namespace {

constexpr int kScreens = 10000;

// Calls `check` with random screens of every kind and their reference.
template <class Check>
void withAnyScreens(Check check, int screens = kScreens) {
    for (int i = 0; i < seedCount(screens); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const RuledSurfaceScreenParams params = anyParams(rng);
        check(rng, OpenRuledScreen(params), ReferenceRuled(params));
        if (::testing::Test::HasFailure()) return;
    }
}

IntersectionSet asSet(const std::optional<Intersection>& hit) {
    return hit ? IntersectionSet(*hit) : IntersectionSet();
}

}  // namespace

TEST(RuledScreenReference, CurvesAndTheirDerivativesAgree) {
    withAnyScreens([](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const double t = rng.coin() ? rng.uniform(-2.0, 3.0) : wildNumber(rng);
        EXPECT_TRUE(sameBits(screen.alongTopCurve(t), reference.top(t)));
        EXPECT_TRUE(sameBits(screen.alongBottomCurve(t), reference.bottom(t)));
        EXPECT_TRUE(sameBits(screen.alongTopCurveDerivative(t), reference.topDerivative(t)));
        EXPECT_TRUE(sameBits(screen.alongBottomCurveDerivative(t), reference.bottomDerivative(t)));
    });
}

TEST(RuledScreenReference, SidesOfRulingsAgree) {
    int left = 0;
    withAnyScreens([&](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const double t = rng.uniform(-2.0, 3.0);
        const Line line = anyLine(rng, reference);
        const bool isLeft = reference.isLeft(t, line.from, line.to);
        left += isLeft;
        EXPECT_EQ(screen.isLeft(t, line.from, line.to), isLeft);
    });
    EXPECT_GT(left, seedCount(kScreens / 5));
    EXPECT_LT(left, kScreens * 4 / 5);
}

TEST(RuledScreenReference, HitsOnTheScreenAgree) {
    int hits = 0;
    withAnyScreens([&](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const Line line = anyLine(rng, reference);
        const IntersectionSet expected = asSet(reference.hit(line.from, line.to, false));
        hits += expected.count();
        EXPECT_TRUE(sameBits(screen.intersect(line.from, line.to), expected));
    });
    EXPECT_GT(hits, seedCount(kScreens / 4));
}

TEST(RuledScreenReference, ExtrapolatedHitsAgreeForEverySign) {
    int hits = 0;
    int signs[3] = {};
    withAnyScreens([&](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const Line line = anyLine(rng, reference);
        const IntersectionSet expected = asSet(reference.hit(line.from, line.to, true));
        for (const Intersection& hit : expected) {
            ++hits;
            ++signs[hit.normalSign + 1];
        }
        const int sign = rng.integer(-2, 2);
        EXPECT_TRUE(
            sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(line.from, line.to, sign), expected));
    });
    EXPECT_GT(hits, seedCount(kScreens / 3));
    for (const int count : signs) EXPECT_GT(count, 100);
}

TEST(RuledScreenReference, PositionsOnTheSectionAgree) {
    int onSection = 0;
    withAnyScreens([&](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const Point3 p = anyPosition(rng, reference);
        const bool expected = reference.isOnSection(p);
        onSection += expected;
        EXPECT_EQ(screen.isOnScreenSection(p), expected);
    });
    EXPECT_GT(onSection, seedCount(kScreens / 8));
}

TEST(RuledScreenReference, NormalsAgree) {
    int found = 0;
    withAnyScreens([&](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const Point3 p = anyPosition(rng, reference);
        const Point3 expected = reference.normal(p);
        found += expected != Point3();
        EXPECT_TRUE(sameBits(screen.getScreenNormal(p), expected));
    });
    EXPECT_GT(found, seedCount(kScreens / 3));
    EXPECT_LT(found, kScreens * 9 / 10);
}

TEST(RuledScreenReference, MappingsAgree) {
    int accepted = 0;
    withAnyScreens([&](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const Point3 p = anyPosition(rng, reference);
        EXPECT_TRUE(sameBits(screen.mapInto2D(p, rng.coin()), reference.uvOf(p)));

        Point2 uv(anyCoordinate(rng), anyCoordinate(rng));
        if (rng.integer(0, 9) == 0) uv = wildPoint<2>(rng);
        const Point3 expected = reference.position(uv[0], uv[1]);
        Point3 mapped(9, 9, 9);
        EXPECT_TRUE(screen.mapInto3D(uv, mapped, true));
        EXPECT_TRUE(sameBits(mapped, expected));
        mapped = Point3(9, 9, 9);
        const bool isOn = reference.isOnSection(expected);
        accepted += isOn;
        EXPECT_EQ(screen.mapInto3D(uv, mapped, false), isOn);
        EXPECT_TRUE(sameBits(mapped, expected));
    });
    EXPECT_GT(accepted, seedCount(kScreens / 8));
}

TEST(RuledScreenReference, ClosestPointsAndDistancesAgree) {
    withAnyScreens([](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const Point3 p = anyPosition(rng, reference);
        const Point3 closest = reference.closestPoint(p);
        EXPECT_TRUE(sameBits(screen.getClosestPoint(p), closest));
        const double x = p[0] - closest[0];
        const double y = p[1] - closest[1];
        const double z = p[2] - closest[2];
        EXPECT_TRUE(sameBits(screen.getShortestDistance(p), std::sqrt(x * x + y * y + z * z)));
    });
}

TEST(RuledScreenReference, EyepointAndAngleAgree) {
    int numbers = 0;
    withAnyScreens([&](Rng&, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const double angle = reference.maxAngle();
        numbers += !std::isnan(angle);
        EXPECT_TRUE(sameBits(screen.getEyepoint(), reference.eyepoint()));
        EXPECT_TRUE(sameBits(screen.getMaxAngleFromHeading(), angle));
        EXPECT_TRUE(sameBits(screen.getCenterOfScreenHeading(), Point3(0, 1, 0)));
    });
    EXPECT_GT(numbers, seedCount(kScreens / 10));
    EXPECT_LT(numbers, kScreens * 9 / 10);
}

TEST(RuledScreenReference, SamplesAgree) {
    withAnyScreens([](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
        const double v = rng.integer(0, 9) == 0 ? wildNumber(rng) : anyCoordinate(rng);
        const double uStart = rng.integer(0, 9) == 0 ? wildNumber(rng) : anyCoordinate(rng);
        const double uEnd = anyCoordinate(rng);
        const int count = rng.integer(-1, 6);
        const int row = rng.integer(-3, 3);
        const bool extrapolate = rng.coin();
        std::map<Point<int, 2>, Point3> samples;
        screen.sampleHorizontally(v, uStart, uEnd, count, row, samples, extrapolate);
        EXPECT_TRUE(sameBits(samples, reference.samples(v, uStart, uEnd, count, row, extrapolate)));

        const int columns = rng.integer(-1, 4);
        const int rows = rng.integer(-1, 4);
        EXPECT_TRUE(sameBits(screen.getDefaultCalibrationPoints(columns, rows),
                             reference.calibrationPoints(columns, rows)));
    });
}

TEST(RuledScreenReference, DisplayGeometryAgrees) {
    withAnyScreens(
        [](Rng&, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
            Point3 viewPoint;
            std::vector<int> indices;
            std::vector<Point3> vertices;
            std::vector<Point3> normals;
            screen.generateGeometry(viewPoint, indices, vertices, normals);
            EXPECT_TRUE(sameBits(viewPoint, reference.viewPoint()));
            EXPECT_TRUE(sameBits(vertices, reference.displayVertices()));
            EXPECT_TRUE(sameBits(normals, reference.displayNormals()));
        },
        100);
}

TEST(RuledScreenReference, ScreensLogAsManyLines) {
    const LogCapture log(L"Quarn.QuarnScreen.ScreenGeometry");
    withAnyScreens(
        [&](Rng& rng, const OpenRuledScreen& screen, const ReferenceRuled& reference) {
            const std::size_t before = log.records().size();
            const Point3 p = anyPosition(rng, reference);
            (void)screen.getClosestPoint(p);
            (void)reference.closestPoint(p);
            (void)screen.isOnScreenSection(p);
            (void)reference.isOnSection(p);
            const Line line = anyLine(rng, reference);
            (void)screen.intersect(line.from, line.to);
            (void)reference.hit(line.from, line.to, false);
            EXPECT_EQ(log.records().size() - before, static_cast<std::size_t>(reference.logLines));
        },
        2000);
    EXPECT_GT(log.records().size(), static_cast<std::size_t>(seedCount(1000)));
}
