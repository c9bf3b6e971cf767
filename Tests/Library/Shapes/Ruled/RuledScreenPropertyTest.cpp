// What mathematics says of ruled screens.
#include <gtest/gtest.h>

#include <QuarnScreen/CylinderScreen.h>

#include "Library/Shapes/Ruled/RuledScreens.h"

using namespace quarn::test;

namespace {

constexpr int kScreens = 10000;
// The search answers the middle of an interval of at most 1e-6 around the true u.
constexpr double kErrorOfU = 0.5e-6;
// Relative rounding of the few dozen operations from the parameters to a position; arcs from 0.2
// make radii up to five chords, which the subtraction of the center cancels.
constexpr double kRounding = 1e-13;

struct Example {
    RuledSurfaceScreenParams params;
    OpenRuledScreen screen;
    double size;   // largest length of the screen, its radii included
    double speed;  // largest length of a curve's derivative
};

Example ordinaryExample(Rng& rng) {
    const RuledSurfaceScreenParams params = ordinaryParams(rng);
    const double topArc = params.maxTheta - params.minTheta;
    const double bottomArc = params.maxPhi - params.minPhi;
    const double topRadius = params.width / 2 / std::sin(topArc / 2);
    const double bottomRadius = params.width / 2 / std::sin(bottomArc / 2);
    return {params, OpenRuledScreen(params), std::max({params.height, topRadius, bottomRadius}),
            std::max(topArc * topRadius, bottomArc * bottomRadius)};
}

Point3 positionAt(const RuledSurfaceScreen& screen, double u, double v) {
    Point3 point;
    screen.mapInto3D(Point2(u, v), point, true);
    return point;
}

double distanceFromLine(const Point3& p, const Point3& from, const Point3& to) {
    return length(cross(p - from, to - from)) / length(to - from);
}

}  // namespace

TEST(RuledScreenProperty, CornersLieAtHalfTheChordAndHeight) {
    for (int i = 0; i < seedCount(kScreens); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Example example = ordinaryExample(rng);
        const double x = example.params.width / 2;
        const double z = example.params.height / 2;
        const double tolerance = kRounding * example.size;
        EXPECT_LT(length(positionAt(example.screen, 0, 0) - Point3(-x, 0, z)), tolerance);
        EXPECT_LT(length(positionAt(example.screen, 1, 0) - Point3(x, 0, z)), tolerance);
        EXPECT_LT(length(positionAt(example.screen, 0, 1) - Point3(-x, 0, -z)), tolerance);
        EXPECT_LT(length(positionAt(example.screen, 1, 1) - Point3(x, 0, -z)), tolerance);
    }
}

TEST(RuledScreenProperty, ArcsAreCirclesTangentToTheirDerivatives) {
    for (int i = 0; i < seedCount(kScreens); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Example example = ordinaryExample(rng);
        const double arc = example.params.maxTheta - example.params.minTheta;
        const double radius = example.params.width / 2 / std::sin(arc / 2);
        const double t = rng.uniform(-0.5, 1.5);
        const Point3 center(0, -radius * std::cos(arc / 2), example.params.height / 2);
        const Point3 spoke = example.screen.alongTopCurve(t) - center;
        const Point3 tangent = example.screen.alongTopCurveDerivative(t);
        EXPECT_NEAR(length(spoke), radius, kRounding * example.size);
        EXPECT_NEAR(length(tangent), arc * radius, kRounding * example.size);
        EXPECT_NEAR(dot(spoke, tangent), 0.0, kRounding * example.size * example.size);
    }
}

TEST(RuledScreenProperty, HitsLieOnTheRayAndOnTheirRuling) {
    int hits = 0;
    for (int i = 0; i < seedCount(kScreens); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Example example = ordinaryExample(rng);
        const Point3 through = positionAt(example.screen, rng.uniform(0, 1), rng.uniform(0, 1));
        const Point3 from = through + Point3(rng.uniform(-2, 2), rng.uniform(-9, -2), rng.uniform(-2, 2));
        for (const Intersection& hit : example.screen.intersect(from, through)) {
            ++hits;
            const double reach = example.size + length(hit.point - from);
            EXPECT_LT(distanceFromLine(hit.point, from, through), kRounding * reach);
            // The ray meets the true ruling, and the ruling of the hit lies as far from it as u is
            // off.
            const Point3 onSurface = positionAt(example.screen, hit.uv[0], hit.uv[1]);
            EXPECT_LT(length(hit.point - onSurface), kErrorOfU * example.speed + kRounding * reach);
            EXPECT_GE(hit.uv[1], 0.0);
            EXPECT_LE(hit.uv[1], 1.0);
        }
        EXPECT_TRUE(example.screen.intersect(through, from).empty() ||
                    example.screen.intersect(from, through).empty())
            << "a line and its reverse are never both answered";
    }
    EXPECT_GT(hits, seedCount(kScreens * 9 / 10));
}

TEST(RuledScreenProperty, UVIsRecoveredFromAPositionOnTheSurface) {
    for (int i = 0; i < seedCount(kScreens); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Example example = ordinaryExample(rng);
        const Point2 uv(rng.uniform(0, 1), rng.uniform(0, 1));
        const Point2 found = example.screen.mapInto2D(positionAt(example.screen, uv[0], uv[1]), false);
        EXPECT_NEAR(found[0], uv[0], kErrorOfU + 1e-9);
        // A shift of the ruling moves the nearest point along it by at most that over the sine of
        // the angle between ruling and ray; times the ruling's length that is at least the height.
        EXPECT_NEAR(found[1], uv[1], kErrorOfU * example.speed / example.params.height + 1e-9);
    }
}

TEST(RuledScreenProperty, EqualArcsAreASectionOfACylinder) {
    for (int i = 0; i < seedCount(kScreens); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Example example = ordinaryExample(rng);
        RuledSurfaceScreenParams& params = example.params;
        const double arc = params.maxTheta - params.minTheta;
        const double radius = params.width / 2 / std::sin(arc / 2);
        const OpenRuledScreen ruled(params.width, params.height, params.minTheta, params.maxTheta,
                                    params.minTheta, params.maxTheta);
        const CylinderScreen cylinder(Point3(0, -radius * std::cos(arc / 2), 0), radius, -arc / 2, arc / 2,
                                      params.height);
        const Point2 uv(rng.uniform(0.001, 0.999), rng.uniform(0.001, 0.999));
        const Point3 p = positionAt(ruled, uv[0], uv[1]);
        Point3 onCylinder;
        cylinder.mapInto3D(uv, onCylinder, true);
        EXPECT_LT(length(p - onCylinder), kRounding * example.size);

        // The cylinder's normal points to its axis, this one away from it.
        const Point3 normal = ruled.getScreenNormal(p);
        EXPECT_LT(length(normal + cylinder.getScreenNormal(p)), 1e-5 * arc + 1e-9);

        const Point3 from(rng.uniform(-0.1, 0.1), p[1] - 9.0, rng.uniform(-0.1, 0.1));
        const Point3 hit = ruled.intersectExtrapolatedWithSpecifiedNormal(from, p, 0).first().point;
        EXPECT_LT(distanceFromLine(hit, from, p), kRounding * (example.size + 9.0));
    }
}

TEST(RuledScreenProperty, NormalsAreSquareToTheRulingAndPointAwayFromTheCentres) {
    for (int i = 0; i < seedCount(kScreens); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Example example = ordinaryExample(rng);
        const double u = rng.uniform(0, 1);
        const Point3 normal =
            example.screen.getScreenNormal(positionAt(example.screen, u, rng.uniform(0, 1)));
        EXPECT_NEAR(length(normal), 1.0, 1e-14);
        EXPECT_GT(normal[1], 0.0) << "towards +Y, as no arc turns by a quarter circle";
        // The root is off by up to 1e-5, which turns the ruling's difference of the curves by twice
        // the speed.
        const Point3 ruling = example.screen.alongBottomCurve(u) - example.screen.alongTopCurve(u);
        EXPECT_NEAR(dot(normal, ruling) / length(ruling), 0.0,
                    1e-5 * 2 * example.speed / example.params.height + 1e-9);
    }
}

TEST(RuledScreenProperty, MirroredRaysGiveMirroredHits) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Example example = ordinaryExample(rng);
        const Point3 through = positionAt(example.screen, rng.uniform(0.01, 0.99), rng.uniform(0.01, 0.99));
        const Point3 from(rng.uniform(-1, 1), through[1] - 5, rng.uniform(-1, 1));
        const auto mirrored = [](const Point3& p) { return Point3(-p[0], p[1], p[2]); };
        const IntersectionSet hits =
            example.screen.intersectExtrapolatedWithSpecifiedNormal(from, through, 0);
        const IntersectionSet others =
            example.screen.intersectExtrapolatedWithSpecifiedNormal(mirrored(from), mirrored(through), 0);
        ASSERT_EQ(hits.count(), others.count());
        if (hits.empty()) continue;
        EXPECT_NEAR(hits.first().uv[0] + others.first().uv[0], 1.0, 4 * kErrorOfU);
    }
}
