#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include <QuarnScreen/CylinderScreen.h>

#include "Support/GeometryBits.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;

// A position at an azimuth on a cylinder around the Z axis.
Point3 at(double theta, double radius = 1.0, double z = 0.0) {
    return {std::sin(theta) * radius, std::cos(theta) * radius, z};
}

CylinderScreen unitCylinder(double minTheta, double maxTheta) {
    return {Point3(), 1.0, minTheta, maxTheta, 2.0};
}

TEST(CylinderSection, TopAndBottomReachAMillionthFurther) {
    const CylinderScreen screen = unitCylinder(-1.0, 1.0);
    for (const double side : {1.0, -1.0}) {
        EXPECT_TRUE(screen.isOnScreenSection(Point3(0, 1, side * (1.0 + 1e-06))));
        EXPECT_FALSE(screen.isOnScreenSection(Point3(0, 1, side * std::nextafter(1.0 + 1e-06, 2.0))));
        EXPECT_FALSE(screen.isOnScreenSection(Point3(0, 1, side * (1.0 + 2e-06))));
    }
}

// The square of the distance counts, so the slack in length shrinks as the radius grows.
TEST(CylinderSection, WallIsAMillionthThickInSquaredUnits) {
    for (const double radius : {0.5, 1.0, 8.0}) {
        const CylinderScreen screen(Point3(), radius, -1.0, 1.0, 2.0);
        for (const double side : {1.0, -1.0}) {
            const double in = std::sqrt(radius * radius + side * 0.99e-06);
            const double out = std::sqrt(radius * radius + side * 1.01e-06);
            EXPECT_TRUE(screen.isOnScreenSection(Point3(0, in, 0))) << radius;
            EXPECT_FALSE(screen.isOnScreenSection(Point3(0, out, 0))) << radius;
        }
    }
}

TEST(CylinderSection, AzimuthLimitsReachAMillionthFurther) {
    const CylinderScreen screen = unitCylinder(-0.5, 1.0);
    EXPECT_TRUE(screen.isOnScreenSection(at(1.0 + 0.99e-06)));
    EXPECT_FALSE(screen.isOnScreenSection(at(1.0 + 1.01e-06)));
    EXPECT_TRUE(screen.isOnScreenSection(at(-0.5 - 0.99e-06)));
    EXPECT_FALSE(screen.isOnScreenSection(at(-0.5 - 1.01e-06)));
}

// At limits of plus or minus a millionth the slack ends at 0 exactly, where +Y lies.
TEST(CylinderSection, EndsOfTheSlackBelongToTheSection) {
    const Point3 ahead(0, 1, 0);
    EXPECT_TRUE(unitCylinder(1e-06, 1.0).isOnScreenSection(ahead));
    EXPECT_TRUE(unitCylinder(-1.0, -1e-06).isOnScreenSection(ahead));
    EXPECT_FALSE(unitCylinder(std::nextafter(1e-06, 1.0), 1.0).isOnScreenSection(ahead));
    EXPECT_FALSE(unitCylinder(-1.0, std::nextafter(-1e-06, -1.0)).isOnScreenSection(ahead));
}

TEST(CylinderSection, SwappedLimitsAreTheSameSectionAndRunUBackwards) {
    const CylinderScreen screen = unitCylinder(-0.5, 1.0);
    const CylinderScreen swapped = unitCylinder(1.0, -0.5);
    for (const double theta : {-1.0, -0.6, -0.4, 0.0, 0.9, 1.1, 3.0}) {
        EXPECT_EQ(screen.isOnScreenSection(at(theta)), swapped.isOnScreenSection(at(theta))) << theta;
        EXPECT_NEAR(screen.mapInto2D(at(theta), false)[0] + swapped.mapInto2D(at(theta), false)[0], 1.0,
                    1e-15);
    }
}

// Intended: the section test takes the azimuth a turn further, mapInto2D does so for negative
// azimuths alone.
TEST(CylinderSection, SectionPastATurnHoldsAPositionThatMapsBelowZero) {
    const CylinderScreen screen = unitCylinder(1.5 * kPi, 2.5 * kPi);
    EXPECT_TRUE(screen.isOnScreenSection(at(kPi / 4)));
    EXPECT_NEAR(screen.mapInto2D(at(kPi / 4), false)[0], -1.25, 1e-15);
    // A negative azimuth is wrapped: 1.75 pi is a quarter of the way.
    EXPECT_TRUE(screen.isOnScreenSection(at(-kPi / 4)));
    EXPECT_NEAR(screen.mapInto2D(at(-kPi / 4), false)[0], 0.25, 1e-15);
}

TEST(CylinderSection, TurnsAreTakenOffInBothDirections) {
    for (const int turns : {-100, -3, -1, 0, 1, 2, 100}) {
        const double turn = turns * 2 * kPi;
        const CylinderScreen screen = unitCylinder(turn + 0.5, turn + 1.0);
        EXPECT_TRUE(screen.isOnScreenSection(at(0.75))) << turns;
        EXPECT_FALSE(screen.isOnScreenSection(at(0.25))) << turns;
        EXPECT_FALSE(screen.isOnScreenSection(at(1.25))) << turns;
    }
}

TEST(CylinderSection, MoreThanATurnHoldsEveryAzimuth) {
    for (const double minTheta : {-20.0, -3.0, 0.0, 1.0, 20.0})
        for (double theta = -3.0; theta < 3.2; theta += 0.25)
            EXPECT_TRUE(unitCylinder(minTheta, minTheta + 6.5).isOnScreenSection(at(theta)));
}

TEST(CylinderSection, NormalPointsToTheAxisWhateverTheHeight) {
    const CylinderScreen screen(Point3(1, 2, 3), 1.0, 0.0, 1.0, 2.0);
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(5, 2, 99)), Point3(-1, 0, 0)));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(1, -7, 3)), Point3(0, 1, 0)));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(4, 6, 0)), Point3(-0.6, -0.8, 0)));
}

TEST(CylinderSection, NormalIsZeroWithinAMillionthOfTheAxis) {
    const CylinderScreen screen = unitCylinder(0.0, 1.0);
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(0, 0, 5)), Point3()));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(0.99e-06, 0, 0)), Point3()));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(1.01e-06, 0, 0)), Point3(-1, 0, 0)));
    EXPECT_EQ(dot(screen.getScreenNormal(Point3(1e-06, 0, 0)), Point3(1, 0, 0)), -1.0)
        << "the limit is strict";
}

TEST(CylinderSection, PositionOnTheAxisHasAzimuthZero) {
    const CylinderScreen screen(Point3(1, 2, 3), 2.0, -0.5, 1.5, 2.0);
    EXPECT_TRUE(sameBits(screen.mapInto2D(Point3(1, 2, 3), false), Point2(0.25, 0.5)));
}

TEST(CylinderSection, ZeroHeightDividesByZero) {
    const CylinderScreen flat(Point3(), 1.0, -1.0, 1.0, 0.0);
    EXPECT_TRUE(std::isnan(flat.mapInto2D(Point3(0, 1, 0), false)[1]));
    EXPECT_EQ(flat.mapInto2D(Point3(0, 1, 1), false)[1], -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(flat.isOnScreenSection(Point3(0, 1, 0)));
    EXPECT_TRUE(std::isnan(flat.getClosestPoint(Point3(0, 1, 0))[2]));
}

TEST(CylinderSection, EqualLimitsDivideByZero) {
    const CylinderScreen line = unitCylinder(0.0, 0.0);
    EXPECT_TRUE(std::isnan(line.mapInto2D(Point3(0, 1, 0), false)[0]));
    EXPECT_EQ(line.mapInto2D(Point3(1, 0, 0), false)[0], std::numeric_limits<double>::infinity());
    EXPECT_TRUE(line.isOnScreenSection(Point3(0, 1, 0)));
}

TEST(CylinderSection, CornersOfTheUnitSquareAreTheCornersOfTheSection) {
    const CylinderScreen screen(Point3(0, 0, 10), 2.0, 0.0, kPi / 2, 4.0);
    Point3 point;
    EXPECT_TRUE(screen.mapInto3D(Point2(0, 0), point, false));
    EXPECT_TRUE(sameBits(point, Point3(0, 2, 12)));
    EXPECT_TRUE(screen.mapInto3D(Point2(0, 1), point, false));
    EXPECT_TRUE(sameBits(point, Point3(0, 2, 8)));
    EXPECT_TRUE(screen.mapInto3D(Point2(1, 0.5), point, false));
    EXPECT_NEAR(point[0], 2.0, 1e-15);
    EXPECT_NEAR(point[1], 0.0, 1e-15);
    EXPECT_EQ(point[2], 10.0);
}

TEST(CylinderSection, UVBesideTheSectionIsWrittenAndRefused) {
    const CylinderScreen screen = unitCylinder(0.0, 1.0);
    for (const Point2& uv : {Point2(2.0, 0.5), Point2(-0.5, 0.5), Point2(0.5, 1.5), Point2(0.5, -0.5)}) {
        Point3 refused(9, 9, 9);
        Point3 accepted(9, 9, 9);
        EXPECT_FALSE(screen.mapInto3D(uv, refused, false));
        EXPECT_TRUE(screen.mapInto3D(uv, accepted, true));
        EXPECT_TRUE(sameBits(refused, accepted));
        EXPECT_TRUE(sameBits(refused, at(uv[0], 1.0, 1.0 - 2.0 * uv[1])));
    }
}

// Two turns past the limit are the limit again.
TEST(CylinderSection, UVBesideAFullCircleIsOnItAgain) {
    Point3 point;
    EXPECT_TRUE(unitCylinder(0.0, 2 * kPi).mapInto3D(Point2(2.0, 0.5), point, false));
}

}  // namespace
}  // namespace quarn::test
