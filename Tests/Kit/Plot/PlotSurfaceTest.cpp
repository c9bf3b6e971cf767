#include <QuarnKit/Plot/Views/PlotSurface.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "Support/Rng.h"
#include "Support/ScriptedScreen.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// What sums of 288 chords lose of an arc of at most a circle, as a part of it.
constexpr double kChordLoss = 2.1e-5;

const Point<double, 3> kOrigin;

TEST(PlotSurface, BoundsReachTheFurthestPositionsBetweenTheSamples) {
    const PlotSurface surface(
        CylinderScreen(Point<double, 3>(7.0, -2.0, 1.0), 6.0, -100 * kPi / 180, 100 * kPi / 180, 3.0));
    EXPECT_NEAR(surface.min()[0], 7.0 - 6.0, 1e-9);
    EXPECT_NEAR(surface.max()[0], 7.0 + 6.0, 1e-9);
    EXPECT_NEAR(surface.min()[1], -2.0 + 6.0 * std::cos(100 * kPi / 180), 1e-9);
    EXPECT_NEAR(surface.max()[1], -2.0 + 6.0, 1e-9);
    EXPECT_NEAR(surface.min()[2], 1.0 - 1.5, 1e-9);
    EXPECT_NEAR(surface.max()[2], 1.0 + 1.5, 1e-9);
}

TEST(PlotSurface, EdgesAreAsLongAsOnTheScreen) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double radius = rng.uniform(0.1, 50.0);
        const double height = rng.uniform(0.1, 50.0);
        const double from = rng.uniform(-kPi, kPi);
        const double arc = rng.uniform(0.1, 2 * kPi);
        const PlotSurface surface(CylinderScreen(rng.point(-90.0, 90.0), radius, from, from + arc, height));
        const auto& lengths = surface.edgeLengths();
        EXPECT_NEAR(lengths[PlotSurface::Top], radius * arc, radius * arc * kChordLoss);
        EXPECT_NEAR(lengths[PlotSurface::Bottom], radius * arc, radius * arc * kChordLoss);
        EXPECT_NEAR(lengths[PlotSurface::Left], height, height * 1e-9);
        EXPECT_NEAR(lengths[PlotSurface::Right], height, height * 1e-9);
    }
}

TEST(PlotSurface, DomeClosesAroundAndAbove) {
    const PlotSurface surface(SphericalScreen(kOrigin, 5.0, -kPi, kPi, 0.0, kPi / 2));
    EXPECT_TRUE(surface.closesAlongU());
    EXPECT_TRUE(surface.isPoint(PlotSurface::Top));
    EXPECT_FALSE(surface.isPoint(PlotSurface::Bottom));
    EXPECT_FALSE(surface.isPoint(PlotSurface::Left));
    EXPECT_FALSE(PlotSurface(FlatScreen(4.0, 3.0)).closesAlongU());
}

TEST(PlotSurface, StraightDirectionsNeedNoMoreCellsThanTheGrid) {
    EXPECT_EQ(PlotSurface(FlatScreen(4.0, 3.0)).columns(), kGridIntervals);
    EXPECT_EQ(PlotSurface(FlatScreen(4.0, 3.0)).rows(), kGridIntervals);
    const PlotSurface cylinder(CylinderScreen(kOrigin, 6.0, -1.0, 1.0, 3.0));
    EXPECT_GT(cylinder.columns(), kGridIntervals);
    EXPECT_EQ(cylinder.rows(), kGridIntervals);
}

TEST(PlotSurface, PositionsAreCentredAndTheLongestSideIsOne) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double width = std::abs(rng.spread(-300, 300));
        const double height = std::abs(rng.spread(-300, 300));
        const PlotSurface surface(FlatScreen(width, height));
        ASSERT_TRUE(surface.isDrawable());
        const auto corner = surface.at(surface.columns(), 0);
        ASSERT_TRUE(corner);
        EXPECT_NEAR(std::max((*corner)[0], (*corner)[2]), 0.5, 1e-9);
    }
}

TEST(PlotSurface, WithoutTwoFinitePositionsNothingIsDrawable) {
    EXPECT_FALSE(PlotSurface(FlatScreen(0.0, 0.0)).isDrawable());
    EXPECT_FALSE(PlotSurface(FlatScreen(kNaN, 3.0)).isDrawable());
    EXPECT_FALSE(PlotSurface(FlatScreen(1.7e308, std::numeric_limits<double>::infinity())).isDrawable());
    ScriptedScreen noMap;
    noMap.onMapInto3D = [](const Point2& /*uv*/, Point3& /*point*/, bool /*extrapolate*/) { return false; };
    EXPECT_FALSE(PlotSurface(noMap).isDrawable());
}

}  // namespace
}  // namespace quarn::test
