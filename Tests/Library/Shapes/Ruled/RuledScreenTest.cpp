#include <gtest/gtest.h>

#include <limits>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/FixedConfig.h"

using namespace quarn::test;

namespace {

constexpr double kPi = std::numbers::pi;
// Half the search's interval in u, times the greatest speed of the curves of kQuarters, plus a
// margin for rounding.
constexpr double kSearchError = 1.2e-6;

const OpenRuledScreen& quarters() {
    static const OpenRuledScreen screen(kQuarters);
    return screen;
}

Point2 uvOfHit(const IntersectionSet& hits) {
    EXPECT_EQ(hits.count(), 1);
    return hits.empty() ? Point2(-9, -9) : hits.first().uv;
}

}  // namespace

TEST(RuledScreen, RadiusAndCentresFollowFromTheArcs) {
    // The derivative at the apex is arc times radius.
    EXPECT_TRUE(sameBits(quarters().alongTopCurveDerivative(0.5)[0], kPi / 2 * 1.4142135623730951));
    EXPECT_TRUE(sameBits(quarters().alongBottomCurveDerivative(0.5)[0], kPi / 2 * 1.4142135623730951));
    // The apex is a radius from the center, at the height of the arc.
    EXPECT_NEAR(quarters().alongTopCurve(0.5)[1], 1.4142135623730951 - 1.0, 1e-15);
    EXPECT_EQ(quarters().alongTopCurve(0.5)[2], 1.0);
    EXPECT_EQ(quarters().alongBottomCurve(0.5)[2], -1.0);
    EXPECT_NEAR(quarters().getEyepoint()[1], -1.0, 1e-15);
}

TEST(RuledScreen, SearchReachesAQuarterCircleToEitherSide) {
    // At u = -0.5 and 1.5 the arcs have turned a quarter circle, to x = -+sqrt(2).
    for (const double side : {-1.0, 1.0}) {
        const auto hitsAt = [&](double x) {
            return quarters()
                .intersectExtrapolatedWithSpecifiedNormal(Point3(x, -5, 0), Point3(x, 5, 0), 0)
                .count();
        };
        EXPECT_EQ(hitsAt(side * (std::numbers::sqrt2 - 1e-9)), 1);
        EXPECT_EQ(hitsAt(side * (std::numbers::sqrt2 + 1e-9)), 0);
    }
    const Point2 uv = quarters().mapInto2D(Point3(std::numbers::sqrt2 - 1e-9, 0, 0), false);
    EXPECT_NEAR(uv[0], 1.5, 1e-4);
}

TEST(RuledScreen, RayThroughTheMiddleHitsTheApex) {
    const IntersectionSet hits = quarters().intersect(Point3(0, -5, 0), Point3(0, 5, 0));
    ASSERT_EQ(hits.count(), 1);
    EXPECT_NEAR(hits.first().point[0], 0.0, 1e-12);
    EXPECT_NEAR(hits.first().point[1], kApexOfQuarters, 1e-12);
    EXPECT_NEAR(hits.first().point[2], 0.0, 1e-12);
    EXPECT_NEAR(hits.first().uv[0], 0.5, kSearchError);
    EXPECT_NEAR(hits.first().uv[1], 0.5, 1e-12);
    EXPECT_TRUE(hits.first().hasUV);
    EXPECT_EQ(hits.first().triangleIndex, -1);
    EXPECT_EQ(hits.first().normalSign, 1);
}

TEST(RuledScreen, RayTowardsTheViewerGivesNoHit) {
    const Point3 front(0, -5, 0);
    const Point3 back(0, 5, 0);
    EXPECT_TRUE(quarters().intersect(back, front).empty());
    EXPECT_TRUE(quarters().intersectExtrapolatedWithSpecifiedNormal(back, front, -1).empty());
}

TEST(RuledScreen, RayBesideTheMiddleKnowsItsV) {
    const Point2 uv = uvOfHit(quarters().intersect(Point3(0.5, -5, 0.3), Point3(0.5, 5, 0.3)));
    EXPECT_NEAR(uv[1], 0.35, 1e-12);
    // x = sqrt(2) sin(angle), and the angle runs from -pi/4 to pi/4.
    EXPECT_NEAR(uv[0], 0.5 + std::asin(0.5 / std::numbers::sqrt2) / (kPi / 2), kSearchError);
}

TEST(RuledScreen, RayBeyondTheSearchGivesNoHitEvenExtrapolated) {
    EXPECT_TRUE(quarters().intersect(Point3(3, -5, 0), Point3(3, 5, 0)).empty());
    EXPECT_TRUE(
        quarters().intersectExtrapolatedWithSpecifiedNormal(Point3(3, -5, 0), Point3(3, 5, 0), 1).empty());
}

TEST(RuledScreen, RayAboveTheTopHitsExtrapolatedWithAPositiveV) {
    const Point3 from(0, -5, 3);
    const Point3 to(0, 5, 3);
    EXPECT_TRUE(quarters().intersect(from, to).empty());
    const Point2 uv = uvOfHit(quarters().intersectExtrapolatedWithSpecifiedNormal(from, to, 1));
    EXPECT_NEAR(uv[1], 1.0, 1e-12);
    // So the position a ruling's length above the top edge shares its UV with the bottom edge.
    EXPECT_NEAR(quarters().mapInto2D(Point3(0, 0, -1), false)[1], 1.0, 1e-12);
    EXPECT_NEAR(quarters().mapInto2D(Point3(0, 0, 1.5), false)[1], 0.25, 1e-12);
}

TEST(RuledScreen, PositionAboveTheTopCountsAsOnTheSection) {
    // v has no sign, so the strip of a ruling's length above the top edge passes for the section.
    EXPECT_TRUE(quarters().isOnScreenSection(Point3(0, kApexOfQuarters, 2.5)));
    EXPECT_FALSE(quarters().isOnScreenSection(Point3(0, kApexOfQuarters, 3.1)));
    EXPECT_FALSE(quarters().isOnScreenSection(Point3(0, kApexOfQuarters, -1.1)));
}

TEST(RuledScreen, NormalAtTheApexPointsAwayFromTheViewer) {
    const Point3 normal = quarters().getScreenNormal(Point3(0, kApexOfQuarters, 0));
    // The root's u is off by up to 1e-5, which turns the normal by that times the arc.
    EXPECT_NEAR(normal[0], 0.0, 1.6e-5);
    EXPECT_NEAR(normal[1], 1.0, 1e-9);
    EXPECT_NEAR(normal[2], 0.0, 1e-9);
}

TEST(RuledScreen, NormalIsFoundWhereTheAcceptanceCouldNeverRefuse) {
    // A position at right angles to every ruling has a sine of 1; it is the distance that refuses
    // it.
    EXPECT_TRUE(sameBits(quarters().getScreenNormal(Point3(0, -1000, -1)), Point3(0, 0, 0)));
}

TEST(RuledScreen, ArcOfZeroHasAnInfiniteRadius) {
    const OpenRuledScreen screen(2.0, 2.0, 0.5, 0.5, -1.0, 1.0);
    EXPECT_EQ(screen.getEyepoint()[1], -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(screen.alongTopCurve(0.5)[1]));
    EXPECT_TRUE(std::isnan(screen.alongTopCurveDerivative(0.5)[0]));
    EXPECT_FALSE(std::isnan(screen.alongBottomCurve(0.5)[1]));
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(screen.intersect(Point3(0, -5, 0), Point3(0, 5, 0)).empty());
    EXPECT_FALSE(screen.isOnScreenSection(Point3(0, 0, 0)));
    EXPECT_TRUE(sameBits(screen.mapInto2D(Point3(0, 0, 0), false), Point2(0, 0)));
    EXPECT_TRUE(
        OpenRuledScreen(2.0, 2.0, 0.5, 0.5, 0.5, 0.5).intersect(Point3(0, -5, 0), Point3(0, 5, 0)).empty());
}

TEST(RuledScreen, OnlyTheDifferencesOfTheLimitsEnterTheGeometry) {
    const OpenRuledScreen centred(2.0, 3.0, -0.5, 0.5, -0.25, 0.25);
    const OpenRuledScreen shifted(2.0, 3.0, 1.0, 2.0, 4.0, 4.5);
    for (const double u : {-0.5, 0.0, 0.3, 1.0}) {
        Point3 a;
        Point3 b;
        centred.mapInto3D(Point2(u, 0.4), a, true);
        shifted.mapInto3D(Point2(u, 0.4), b, true);
        EXPECT_TRUE(sameBits(a, b));
    }
    EXPECT_NE(centred.getUniqueDataHash(), shifted.getUniqueDataHash());
}

TEST(RuledScreen, MaxAngleIsNoAngle) {
    // The arc cosine of the eye's distance behind the chord, half the width over the tangent of
    // half an arc.
    const OpenRuledScreen narrow(0.5, 7.0, -0.5, 0.5, -0.5, 0.5);
    EXPECT_NEAR(narrow.getMaxAngleFromHeading(), std::acos(0.25 / std::tan(0.5)), 1e-14);
    const OpenRuledScreen wrapped(0.5, 7.0, -2.0, 2.0, -2.0, 2.0);
    EXPECT_NEAR(wrapped.getMaxAngleFromHeading(), std::acos(0.25 / std::tan(2.0)), 1e-14);
    EXPECT_GT(wrapped.getMaxAngleFromHeading(), kPi / 2);
    EXPECT_TRUE(std::isnan(OpenRuledScreen(4.0, 2.0, -0.5, 0.5, -0.5, 0.5).getMaxAngleFromHeading()));
}

TEST(RuledScreen, DefaultConstructedIsInvalid) {
    const OpenRuledScreen screen;
    EXPECT_FALSE(screen.isValid());
    EXPECT_EQ(screen.getParams().width, -1.0);
    EXPECT_TRUE(sameBits(screen.getEyepoint(), Point3(0, 0, 0)));
    EXPECT_TRUE(screen.intersect(Point3(0, -5, 0), Point3(0, 5, 0)).empty());
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(0, 0, 0)), Point3(0, 0, 0)));
}

TEST(RuledScreen, IsValidLooksAtTheWidthAlone) {
    EXPECT_TRUE(OpenRuledScreen(0.0, -3.0, 0, 1, 0, 1).isValid());
    EXPECT_TRUE(OpenRuledScreen(-0.0, 1.0, 0, 0, 0, 0).isValid());
    EXPECT_FALSE(OpenRuledScreen(-std::numeric_limits<double>::denorm_min(), 1.0, 0, 1, 0, 1).isValid());
    EXPECT_FALSE(OpenRuledScreen(std::nan(""), 1.0, 0, 1, 0, 1).isValid());
}

TEST(RuledScreen, EveryWayOfGivingParametersComputesTheRest) {
    FixedConfig config(2.0, 3.0);
    config.minTheta = -0.5;
    config.maxTheta = 0.6;
    config.minPhi = -0.7;
    config.maxPhi = 0.8;
    const OpenRuledScreen expected(2.0, 3.0, -0.5, 0.6, -0.7, 0.8);
    OpenRuledScreen updated(9.0, 9.0, -1.0, 1.0, -1.0, 1.0);
    updated.updateGeometry(&config);
    OpenRuledScreen reset(2.0, 3.0, 0.0, 1.0, 0.0, 1.0);
    reset.reset(-0.5, 0.6, -0.7, 0.8);
    OpenRuledScreen assigned;
    assigned = expected;
    const OpenRuledScreen copied(expected);
    for (const RuledSurfaceScreen& screen : std::initializer_list<RuledSurfaceScreen>{
             RuledSurfaceScreen(&config), updated, reset, assigned, copied}) {
        EXPECT_EQ(screen.getUniqueDataHash(), expected.getUniqueDataHash());
        EXPECT_TRUE(sameBits(screen.getEyepoint(), expected.getEyepoint()));
        const Point3 from(0.3, -4, 0.2);
        const Point3 to(0.3, 4, 0.4);
        EXPECT_TRUE(sameBits(screen.intersect(from, to), expected.intersect(from, to)));
        EXPECT_FALSE(screen.intersect(from, to).empty());
    }
}

TEST(RuledScreen, UpdateGeometryReadsInItsOwnOrder) {
    const std::vector<std::string> order{"getHeight", "getWidth",    "getMaxPhi",
                                         "getMinPhi", "getMaxTheta", "getMinTheta"};
    FixedConfig config(2.0, 3.0);
    RuledSurfaceScreen screen;
    screen.updateGeometry(&config);
    EXPECT_EQ(config.calls, order);
    config.calls.clear();
    EXPECT_EQ(RuledSurfaceScreen(&config).getParams().width, 2.0);
    EXPECT_EQ(config.calls, order);
}
