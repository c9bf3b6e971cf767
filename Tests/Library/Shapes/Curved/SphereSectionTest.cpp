#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include <QuarnScreen/SphericalScreen.h>

#include "Support/GeometryBits.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;

// A position on a sphere around the origin.
Point3 at(double theta, double phi = 0.0, double radius = 1.0) {
    return {std::sin(theta) * radius * std::cos(phi), std::cos(theta) * radius * std::cos(phi),
            std::sin(phi) * radius};
}

// A belt of the unit sphere.
SphericalScreen belt(double minTheta, double maxTheta) {
    return {Point3(), 1.0, minTheta, maxTheta, -0.5, 0.5};
}

TEST(SphereSection, AzimuthLimitsReachAMillionthFurther) {
    const SphericalScreen screen = belt(0.5, 1.0);
    EXPECT_TRUE(screen.isOnScreenSection(at(1.0 + 0.99e-06)));
    EXPECT_FALSE(screen.isOnScreenSection(at(1.0 + 1.01e-06)));
    EXPECT_TRUE(screen.isOnScreenSection(at(0.5 - 0.99e-06)));
    EXPECT_FALSE(screen.isOnScreenSection(at(0.5 - 1.01e-06)));
    EXPECT_FALSE(belt(-0.5, 1.0).isOnScreenSection(at(-0.5 - 1.01e-06)));
}

TEST(SphereSection, ElevationLimitsReachAMillionthFurther) {
    const SphericalScreen screen(Point3(), 1.0, -1.0, 1.0, -0.3, 0.6);
    EXPECT_TRUE(screen.isOnScreenSection(at(0.0, 0.6 + 0.99e-06)));
    EXPECT_FALSE(screen.isOnScreenSection(at(0.0, 0.6 + 1.01e-06)));
    EXPECT_TRUE(screen.isOnScreenSection(at(0.0, -0.3 - 0.99e-06)));
    EXPECT_FALSE(screen.isOnScreenSection(at(0.0, -0.3 - 1.01e-06)));
}

// At limits of plus or minus a millionth the slack ends at 0 exactly, where +Y lies.
TEST(SphereSection, EndsOfTheSlackBelongToTheSection) {
    const Point3 ahead(0, 1, 0);
    EXPECT_TRUE(SphericalScreen(Point3(), 1.0, -1.0, 1.0, -1.0, -1e-06).isOnScreenSection(ahead));
    EXPECT_TRUE(SphericalScreen(Point3(), 1.0, -1.0, 1.0, 1e-06, 1.0).isOnScreenSection(ahead));
    EXPECT_TRUE(belt(1e-06, 1.0).isOnScreenSection(ahead));
    EXPECT_TRUE(belt(-1.0, -1e-06).isOnScreenSection(ahead));
    EXPECT_FALSE(belt(std::nextafter(1e-06, 1.0), 1.0).isOnScreenSection(ahead));
    EXPECT_FALSE(belt(-1.0, std::nextafter(-1e-06, -1.0)).isOnScreenSection(ahead));
}

// Unlike on the cylinder the slack grows with the radius.
TEST(SphereSection, SurfaceIsAMillionthThickInSquaresOfTheRadius) {
    for (const double radius : {0.01, 1.0, 1000.0}) {
        const SphericalScreen screen(Point3(), radius, -1.0, 1.0, -0.5, 0.5);
        for (const double side : {1.0, -1.0}) {
            EXPECT_TRUE(screen.isOnScreenSection(Point3(0, radius * std::sqrt(1.0 + side * 0.99e-06), 0)));
            EXPECT_FALSE(screen.isOnScreenSection(Point3(0, radius * std::sqrt(1.0 + side * 1.01e-06), 0)));
        }
    }
}

// Intended: the cylinder's test would take the azimuth a turn further.
TEST(SphereSection, SectionPastATurnRefusesASmallPositiveAzimuth) {
    const SphericalScreen screen = belt(1.5 * kPi, 2.5 * kPi);
    EXPECT_FALSE(screen.isOnScreenSection(at(kPi / 4)));
    EXPECT_TRUE(screen.isOnScreenSection(at(-kPi / 4)));
}

// Intended: a negative azimuth that no turn brings into the range has no upper limit.
TEST(SphereSection, TwoNegativeLimitsHoldEverythingUpToAzimuthZero) {
    const SphericalScreen screen = belt(-1.5, -1.0);
    EXPECT_TRUE(screen.isOnScreenSection(at(-1.25)));
    EXPECT_TRUE(screen.isOnScreenSection(at(-0.5)));
    EXPECT_TRUE(screen.isOnScreenSection(at(-1e-9)));
    EXPECT_FALSE(screen.isOnScreenSection(at(0.0)));
    EXPECT_FALSE(screen.isOnScreenSection(at(1e-9)));
    EXPECT_FALSE(screen.isOnScreenSection(at(-1.6)));
}

TEST(SphereSection, NegativeAzimuthIsTakenATurnFurtherUpToTheLimit) {
    const SphericalScreen screen = belt(1.0, 5.0);
    EXPECT_TRUE(screen.isOnScreenSection(at(4.9)));
    EXPECT_FALSE(screen.isOnScreenSection(at(5.1)));
    EXPECT_TRUE(screen.isOnScreenSection(at(1.1)));
    EXPECT_FALSE(screen.isOnScreenSection(at(0.9)));
}

TEST(SphereSection, ReversedLimitsHoldNothingOfAPositiveAzimuth) {
    const SphericalScreen screen = belt(1.0, 0.5);
    for (double theta = 0.0; theta < 3.0; theta += 0.125) EXPECT_FALSE(screen.isOnScreenSection(at(theta)));
    EXPECT_FALSE(SphericalScreen(Point3(), 1.0, -1.0, 1.0, 0.5, -0.5).isOnScreenSection(at(0.0)));
}

TEST(SphereSection, PositionOnThePoleHasAzimuthZero) {
    const SphericalScreen dome(Point3(1, 2, 3), 2.0, -kPi / 2, kPi, 0.0, kPi / 2);
    EXPECT_TRUE(dome.isOnScreenSection(Point3(1, 2, 5)));
    const Point2 uv = dome.mapInto2D(Point3(1, 2, 5), false);
    EXPECT_NEAR(uv[0], 1.0 / 3.0, 1e-15);
    EXPECT_EQ(uv[1], 0.0);
    EXPECT_FALSE(SphericalScreen(Point3(), 1.0, 0.5, 1.0, 0.0, kPi / 2).isOnScreenSection(Point3(0, 0, 1)));
}

// Above the pole, but within the surface's slack, no elevation exists.
TEST(SphereSection, PositionJustAboveThePoleIsOnNoSection) {
    const SphericalScreen whole(Point3(), 1.0, -kPi, kPi, -kPi / 2, kPi / 2);
    EXPECT_TRUE(whole.isOnScreenSection(Point3(0, 0, 1)));
    EXPECT_FALSE(whole.isOnScreenSection(Point3(0, 0, std::nextafter(1.0, 2.0))));
}

TEST(SphereSection, EqualElevationsMapToInfinityOrNaN) {
    const SphericalScreen ring(Point3(), 1.0, -1.0, 1.0, 0.0, 0.0);
    EXPECT_TRUE(std::isnan(ring.mapInto2D(Point3(0, 1, 0), false)[1]));
    EXPECT_EQ(ring.mapInto2D(Point3(0, 0.8, 0.6), false)[1], -std::numeric_limits<double>::infinity());
    EXPECT_EQ(ring.mapInto2D(Point3(0, 0.8, -0.6), false)[1], std::numeric_limits<double>::infinity());
}

TEST(SphereSection, PositionHigherThanTheSphereMapsToNaN) {
    const Point2 uv = belt(-1.0, 1.0).mapInto2D(Point3(0, 1, 1.5), false);
    EXPECT_TRUE(std::isnan(uv[0]));
    EXPECT_TRUE(std::isnan(uv[1]));
}

TEST(SphereSection, NormalPointsToTheCentre) {
    const SphericalScreen screen(Point3(1, 2, 3), 1.0, 0.0, 1.0, 0.0, 1.0);
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(1, 2, 99)), Point3(0, 0, -1)));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(4, 6, 3)), Point3(-0.6, -0.8, 0)));
}

TEST(SphereSection, NormalIsZeroWithinAMillionthOfTheCentre) {
    const SphericalScreen screen = belt(0.0, 1.0);
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3()), Point3()));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(0, 0, 0.99e-06)), Point3()));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(0, 0, 1.01e-06)), Point3(0, 0, -1)));
    EXPECT_EQ(screen.getScreenNormal(Point3(0, 0, 1e-06))[2], -1.0) << "the limit is strict";
}

TEST(SphereSection, UVBesideTheSectionIsWrittenAndRefused) {
    const SphericalScreen screen(Point3(), 1.0, 0.0, 1.0, 0.0, 0.5);
    for (const Point2& uv : {Point2(2.0, 0.5), Point2(-0.5, 0.5), Point2(0.5, 1.5), Point2(0.5, -0.5)}) {
        Point3 refused(9, 9, 9);
        Point3 accepted(9, 9, 9);
        EXPECT_FALSE(screen.mapInto3D(uv, refused, false));
        EXPECT_TRUE(screen.mapInto3D(uv, accepted, true));
        EXPECT_TRUE(sameBits(refused, accepted));
        EXPECT_TRUE(sameBits(refused, at(uv[0], 0.5 - 0.5 * uv[1])));
    }
}

// Intended: follows from the missing upper limit; here u = 2 is azimuth -0.5.
TEST(SphereSection, UVBesideTwoNegativeLimitsIsAccepted) {
    Point3 point;
    EXPECT_TRUE(belt(-1.5, -1.0).mapInto3D(Point2(2.0, 0.5), point, false));
}

}  // namespace
}  // namespace quarn::test
