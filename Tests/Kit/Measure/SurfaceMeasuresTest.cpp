#include <QuarnKit/Measure/SurfaceMeasures.h>

#include <gtest/gtest.h>
#include <cmath>
#include <numbers>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include <QuarnKit/Measure/RuledArea.h>
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;

Point<double, 3> positionAt(const IScreenGeometry& screen, double u, double v) {
    Point<double, 3> position;
    (void)screen.mapInto3D({u, v}, position, true);
    return position;
}

// The same measures by dense sampling: chords for lengths, triangles for the area.
SurfaceMeasures sampled(const IScreenGeometry& screen, int steps) {
    const auto at = [&](int i, int j) {
        return positionAt(screen, static_cast<double>(i) / steps, static_cast<double>(j) / steps);
    };
    SurfaceMeasures measures{.extent = {}, .edges = EdgeLengths()};
    for (int i = 0; i <= steps; ++i) {
        for (int j = 0; j <= steps; ++j) {
            const Point<double, 3> here = at(i, j);
            measures.extent.include(here);
            if (i == steps || j == steps) continue;
            const Point<double, 3> diagonal = at(i + 1, j + 1) - here;
            measures.area += (length(cross(diagonal, at(i + 1, j) - here)) +
                              length(cross(diagonal, at(i, j + 1) - here))) /
                             2.0;
        }
        if (i == steps) continue;
        measures.edges->top += length(at(i + 1, 0) - at(i, 0));
        measures.edges->bottom += length(at(i + 1, steps) - at(i, steps));
        measures.edges->left += length(at(0, i + 1) - at(0, i));
        measures.edges->right += length(at(steps, i + 1) - at(steps, i));
    }
    return measures;
}

// The sampled measures are too small by an error of the order of the step's square.
void expectAsSampled(const IScreenGeometry& screen) {
    constexpr int kSteps = 400;
    constexpr double kTolerance = 3e-4;
    const SurfaceMeasures measures = surfaceMeasuresOf(screen);
    const SurfaceMeasures expected = sampled(screen, kSteps);
    const double size = length(expected.extent.extent());
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(measures.extent.min[axis], expected.extent.min[axis], kTolerance * size);
        EXPECT_NEAR(measures.extent.max[axis], expected.extent.max[axis], kTolerance * size);
        EXPECT_LE(measures.extent.min[axis], expected.extent.min[axis] + 1e-12 * size);
        EXPECT_GE(measures.extent.max[axis], expected.extent.max[axis] - 1e-12 * size);
    }
    EXPECT_NEAR(measures.area, expected.area, kTolerance * expected.area);
    ASSERT_TRUE(measures.edges);
    EXPECT_NEAR(measures.edges->top, expected.edges->top, kTolerance * size);
    EXPECT_NEAR(measures.edges->right, expected.edges->right, kTolerance * size);
    EXPECT_NEAR(measures.edges->bottom, expected.edges->bottom, kTolerance * size);
    EXPECT_NEAR(measures.edges->left, expected.edges->left, kTolerance * size);
    EXPECT_FALSE(measures.boundaryLength);
}

TEST(SurfaceMeasures, AreThoseOfDenseSamples) {
    for (int i = 0; i < seedCount(20); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const Point<double, 3> center = rng.spreadPoint(-3, 3);
        const double radius = rng.uniform(0.5, 20);
        const double height = rng.uniform(0.5, 20);
        const double theta = rng.uniform(-9, 9);
        const double phi = rng.uniform(-kPi / 2, kPi / 2);
        expectAsSampled(FlatScreen(radius, height));
        expectAsSampled(CylinderScreen(center, radius, theta, theta + rng.uniform(-6, 6), height));
        expectAsSampled(SphericalScreen(center, radius, theta, theta + rng.uniform(-6, 6), phi,
                                        rng.uniform(-kPi / 2, kPi / 2)));
        expectAsSampled(
            RuledSurfaceScreen(radius, height, 0.0, rng.uniform(0.1, 5.5), 0.0, rng.uniform(0.1, 5.5)));
    }
}

TEST(SurfaceMeasures, ElevationsBeyondThePolesCount) {
    expectAsSampled(SphericalScreen({1.0, 2.0, 3.0}, 2.0, -1.0, 1.5, -2.0, 5.0));
    expectAsSampled(SphericalScreen({}, 2.0, -1.0, 1.5, 7.0, 4.0));
}

TEST(SurfaceMeasures, AHalfDomeEndsAtItsEdge) {
    // A file stores 16 digits of a quarter turn.
    const SurfaceMeasures dome =
        surfaceMeasuresOf(SphericalScreen({}, 6.0, -kPi, kPi, 0.0, 1.570796326794897));
    EXPECT_EQ(dome.extent.min, (Point<double, 3>(-6.0, -6.0, 0.0)));
    EXPECT_EQ(dome.extent.max, (Point<double, 3>(6.0, 6.0, 6.0)));
    EXPECT_DOUBLE_EQ(dome.area, 72.0 * kPi);
    EXPECT_EQ(dome.edges->top, 0.0);
    EXPECT_DOUBLE_EQ(dome.edges->bottom, 12.0 * kPi);
    EXPECT_DOUBLE_EQ(dome.edges->left, 3.0 * kPi);
}

TEST(SurfaceMeasures, AMeshHasThoseOfItsTriangles) {
    const SurfaceMeasures measures =
        surfaceMeasuresOf(TriangleScreen(flatGrid({3, 4}, {.width = 4.0, .height = 2.0})));
    EXPECT_EQ(measures.extent.extent(), (Point<double, 3>(4.0, 0.0, 2.0)));
    EXPECT_NEAR(measures.area, 8.0, 1e-12);
    EXPECT_FALSE(measures.edges);
    EXPECT_NEAR(measures.boundaryLength.value_or(0.0), 12.0, 1e-12);
}

TEST(SurfaceMeasures, AMeshWithoutTrianglesHasNone) {
    const SurfaceMeasures measures = surfaceMeasuresOf(TriangleScreen());
    EXPECT_TRUE(measures.extent.isEmpty());
    EXPECT_EQ(measures.area, 0.0);
    EXPECT_EQ(measures.boundaryLength, 0.0);
}

TEST(SurfaceMeasures, ARuledScreenOfEqualArcsIsACylinder) {
    const RuledShape equal{.width = 4.0, .height = 2.5, .topArc = 2.0, .bottomArc = 2.0};
    const RuledShape nearlyEqual{.width = 4.0, .height = 2.5, .topArc = 2.0, .bottomArc = 2.0 + 1e-12};
    EXPECT_DOUBLE_EQ(ruledAreaOf(equal), 2.0 / std::sin(1.0) * 2.0 * 2.5);
    EXPECT_NEAR(ruledAreaOf(nearlyEqual), ruledAreaOf(equal), 1e-9);
}

TEST(SurfaceMeasures, ARuledScreenWithoutHeightIsTheAreaBetweenItsArcs) {
    const auto segment = [](double arc) {
        const double radius = 2.0 / std::sin(arc / 2);
        return radius * radius * (arc - std::sin(arc)) / 2;
    };
    EXPECT_NEAR(ruledAreaOf({.width = 4.0, .height = 0.0, .topArc = 2.0, .bottomArc = 1.0}),
                segment(2.0) - segment(1.0), 1e-9);
}

}  // namespace
}  // namespace quarn::test
