// Special values in every argument of a ruled screen.
#include <gtest/gtest.h>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/SpecialArguments.h"

using namespace quarn::test;

namespace {

IntersectionSet asSet(const std::optional<Intersection>& hit) {
    return hit ? IntersectionSet(*hit) : IntersectionSet();
}

// Runs all queries that take no special argument of their own.
void expectAgreement(const OpenRuledScreen& screen, const ReferenceRuled& reference) {
    const Point3 from(0.3, -4.0, 0.2);
    const Point3 to(0.2, 4.0, 0.3);
    EXPECT_TRUE(sameBits(screen.intersect(from, to), asSet(reference.hit(from, to, false))));
    EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, 1),
                         asSet(reference.hit(from, to, true))));
    Point3 point;
    const Point3 expected = reference.position(0.3, 0.4);
    EXPECT_EQ(screen.mapInto3D(Point2(0.3, 0.4), point, false), reference.isOnSection(expected));
    EXPECT_TRUE(sameBits(point, expected));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(expected), reference.normal(expected)));
    EXPECT_TRUE(sameBits(screen.getClosestPoint(from), reference.closestPoint(from)));
    EXPECT_TRUE(sameBits(screen.getEyepoint(), reference.eyepoint()));
    EXPECT_TRUE(sameBits(screen.getMaxAngleFromHeading(), reference.maxAngle()));
    EXPECT_EQ(screen.isValid(), reference.width >= 0.0);
}

const std::array<RuledSurfaceScreenParams, 3> kScreens = {
    kQuarters, RuledSurfaceScreenParams{3.0, 1.5, -0.4, 0.6, 1.0, 3.0},
    RuledSurfaceScreenParams{1.0, 4.0, -2.0, 2.0, 1.0, 0.5}};

}  // namespace

TEST(RuledScreenSpecialValues, InTheParameters) {
    int searched = 0;
    const std::array<double, 6> usual{2.0, 2.5, -0.7, 0.7, -0.6, 0.5};
    withSpecialArguments(usual, [&](const std::array<double, 6>& a) {
        const RuledSurfaceScreenParams params{a[0], a[1], a[2], a[3], a[4], a[5]};
        if (!searchEnds(params)) return;
        ++searched;
        expectAgreement(OpenRuledScreen(params), ReferenceRuled(params));
    });
    EXPECT_GT(searched, 3000);
}

TEST(RuledScreenSpecialValues, InTheLine) {
    for (const RuledSurfaceScreenParams& params : kScreens) {
        const OpenRuledScreen screen(params);
        const ReferenceRuled reference(params);
        withSpecialArguments<6>({0.1, -4.0, 0.2, 0.2, 4.0, 0.1}, [&](const std::array<double, 6>& a) {
            const Point3 from(a[0], a[1], a[2]);
            const Point3 to(a[3], a[4], a[5]);
            EXPECT_TRUE(sameBits(screen.intersect(from, to), asSet(reference.hit(from, to, false))));
            EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, 0),
                                 asSet(reference.hit(from, to, true))));
            EXPECT_EQ(screen.isLeft(0.4, from, to), reference.isLeft(0.4, from, to));
        });
    }
}

TEST(RuledScreenSpecialValues, InThePosition) {
    for (const RuledSurfaceScreenParams& params : kScreens) {
        const OpenRuledScreen screen(params);
        const ReferenceRuled reference(params);
        withSpecialArguments<3>({0.1, 0.3, 0.2}, [&](const std::array<double, 3>& a) {
            const Point3 p(a[0], a[1], a[2]);
            EXPECT_EQ(screen.isOnScreenSection(p), reference.isOnSection(p));
            EXPECT_TRUE(sameBits(screen.mapInto2D(p, true), reference.uvOf(p)));
            EXPECT_TRUE(sameBits(screen.getScreenNormal(p), reference.normal(p)));
            EXPECT_TRUE(sameBits(screen.getClosestPoint(p), reference.closestPoint(p)));
        });
    }
}

TEST(RuledScreenSpecialValues, InTheUVAndTheSamples) {
    for (const RuledSurfaceScreenParams& params : kScreens) {
        const OpenRuledScreen screen(params);
        const ReferenceRuled reference(params);
        withSpecialArguments<3>({0.25, 0.1, 0.9}, [&](const std::array<double, 3>& a) {
            Point3 point(9, 9, 9);
            const Point3 expected = reference.position(a[0], a[1]);
            EXPECT_EQ(screen.mapInto3D(Point2(a[0], a[1]), point, false), reference.isOnSection(expected));
            EXPECT_TRUE(sameBits(point, expected));
            EXPECT_TRUE(sameBits(screen.alongTopCurveDerivative(a[0]), reference.topDerivative(a[0])));
            for (const bool extrapolate : {false, true}) {
                std::map<Point<int, 2>, Point3> samples;
                screen.sampleHorizontally(a[0], a[1], a[2], 3, 5, samples, extrapolate);
                EXPECT_TRUE(sameBits(samples, reference.samples(a[0], a[1], a[2], 3, 5, extrapolate)));
            }
        });
    }
}

TEST(RuledScreenSpecialValues, PositionAtTheEndOfARulingHasANormal) {
    // At the bottom arc the direction from a ruling's end to the position is 0 / 0 for one u.
    const OpenRuledScreen screen(kQuarters);
    for (const double u : {0.25, 0.5, 0.75}) {
        const Point3 normal = screen.getScreenNormal(screen.alongBottomCurve(u));
        EXPECT_NEAR(length(normal), 1.0, 1e-14);
        EXPECT_TRUE(sameBits(normal, ReferenceRuled(kQuarters).normal(ReferenceRuled(kQuarters).bottom(u))));
    }
}
