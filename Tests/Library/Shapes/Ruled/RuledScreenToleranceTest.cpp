// Each tolerance of the ruled screen from both sides.
#include <gtest/gtest.h>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/LogCapture.h"

using namespace quarn::test;

namespace {

OpenRuledScreen withArcs(double topArc, double bottomArc) {
    return {2.0, 2.0, 0.0, topArc, 0.0, bottomArc};
}

// A chord so short that positions beside an edge stay near to the surface.
OpenRuledScreen narrowQuarters() {
    return {0.2, 2.0, kQuarters.minTheta, kQuarters.maxTheta, kQuarters.minPhi, kQuarters.maxPhi};
}

bool isOnAt(const RuledSurfaceScreen& screen, double u, double v) {
    Point3 point;
    return screen.mapInto3D(Point2(u, v), point, false);
}

}  // namespace

TEST(RuledScreenTolerance, SearchEndsAfterTwentyOneHalvingsOfARangeOfTwo) {
    // 2 / 2^21 = 0.95e-6 is the first length of at most 1e-6, so u lies in the middle of such a
    // cell.
    const OpenRuledScreen screen(kQuarters);
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 p(rng.uniform(-1.3, 1.3), 0.0, rng.uniform(-1.0, 1.0));
        const double halfCells = (screen.mapInto2D(p, false)[0] + 0.5) * 2097152.0;
        EXPECT_EQ(halfCells, std::floor(halfCells));
        EXPECT_EQ(std::fmod(halfCells, 2.0), 1.0);
    }
}

TEST(RuledScreenTolerance, PositionOnTheSectionIsWithinAMillionthOfTheSurface) {
    const OpenRuledScreen screen(kQuarters);
    const auto isOn = [&](double offset) {
        return screen.isOnScreenSection(Point3(0, kApexOfQuarters + offset, 0.3));
    };
    for (const double side : {-1.0, 1.0}) {
        EXPECT_TRUE(isOn(side * 0.999e-6));
        EXPECT_FALSE(isOn(side * 1.001e-6));
    }
}

TEST(RuledScreenTolerance, SectionEndsAMillionthBeyondTheSides) {
    // The search answers the middles of cells of 2^-20: -0.48e-6 is the last that passes, -1.43e-6
    // is not.
    const OpenRuledScreen screen = narrowQuarters();
    EXPECT_TRUE(isOnAt(screen, -0.9e-6, 0.5));
    EXPECT_FALSE(isOnAt(screen, -1.0e-6, 0.5));
    EXPECT_TRUE(isOnAt(screen, 1.0 + 0.9e-6, 0.5));
    EXPECT_FALSE(isOnAt(screen, 1.0 + 1.0e-6, 0.5));
}

TEST(RuledScreenTolerance, SectionEndsAMillionthBelowTheBottomAndARulingAboveTheTop) {
    const OpenRuledScreen screen = narrowQuarters();
    EXPECT_TRUE(isOnAt(screen, 0.5, 1.0 + 0.999e-6));
    EXPECT_FALSE(isOnAt(screen, 0.5, 1.0 + 1.001e-6));
    // Above the top v counts back up.
    EXPECT_TRUE(isOnAt(screen, 0.5, -1.0 - 0.999e-6));
    EXPECT_FALSE(isOnAt(screen, 0.5, -1.0 - 1.001e-6));
}

TEST(RuledScreenTolerance, HitBetweenTheArcsHasNoSlack) {
    const OpenRuledScreen screen(kQuarters);
    const auto hitsAt = [&](double z) { return screen.intersect(Point3(0, -5, z), Point3(0, 5, z)).count(); };
    // Well above the rounding of lengths near 2, far below any tolerance of the screen.
    constexpr double kStep = 1e-13;
    EXPECT_EQ(hitsAt(1.0 - kStep), 1);
    EXPECT_EQ(hitsAt(1.0 + kStep), 0);
    EXPECT_EQ(hitsAt(-1.0 + kStep), 1);
    EXPECT_EQ(hitsAt(-1.0 - kStep), 0);
}

TEST(RuledScreenTolerance, NormalReachesOnePercentOfTheWidth) {
    const OpenRuledScreen screen(2.0, 5.0, kQuarters.minTheta, kQuarters.maxTheta, kQuarters.minPhi,
                                 kQuarters.maxPhi);
    const auto hasNormal = [&](double offset) {
        return screen.getScreenNormal(Point3(0, kApexOfQuarters + offset, 0.3)) != Point3();
    };
    for (const double side : {-1.0, 1.0}) {
        EXPECT_TRUE(hasNormal(side * 0.019999));
        EXPECT_FALSE(hasNormal(side * 0.020001));
    }
}

TEST(RuledScreenTolerance, NormalsRootIsFoundInSeventeenHalvings) {
    // At the root's u, a multiple of 2^-17, the horizontal derivatives give the normal's x over its
    // y.
    const OpenRuledScreen screen(kQuarters);
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double u = rng.uniform(0.01, 0.99);
        Point3 p;
        screen.mapInto3D(Point2(u, rng.uniform(0.1, 0.9)), p, true);
        const Point3 normal = screen.getScreenNormal(p);
        const double cells = (std::atan2(normal[0], normal[1]) / (std::numbers::pi / 2) + 0.5) * 131072.0;
        // The rounding of angles near 1, in cells.
        EXPECT_NEAR(cells, std::round(cells), 1e-9);
        // The last midpoint is an odd multiple.
        EXPECT_EQ(std::fmod(std::round(cells), 2.0), 1.0);
        EXPECT_NEAR(cells / 131072.0, u, 1e-5);
    }
}

TEST(RuledScreenTolerance, ArcsAboveThreePointOneFourWithTwelveDecimalsAreLogged) {
    const auto linesFor = [](const RuledSurfaceScreen& screen) {
        const LogCapture log(L"Quarn.QuarnScreen.ScreenGeometry");
        Point3 apex;
        screen.mapInto3D(Point2(0.5, 0.5), apex, true);
        EXPECT_NE(screen.getScreenNormal(apex), Point3(0, 0, 0));
        return log.records().size();
    };
    constexpr double kLimit = 3.141592653589;
    EXPECT_EQ(linesFor(withArcs(kLimit, 1.0)), 0U);
    EXPECT_EQ(linesFor(withArcs(1.0, kLimit)), 0U);
    EXPECT_EQ(linesFor(withArcs(std::nextafter(kLimit, 4.0), 1.0)), 1U);
    EXPECT_EQ(linesFor(withArcs(1.0, std::nextafter(kLimit, 4.0))), 1U);
    EXPECT_EQ(linesFor(withArcs(std::numbers::pi, std::numbers::pi)), 1U);
    EXPECT_EQ(linesFor(withArcs(-kLimit, 1.0)), 0U);
    EXPECT_EQ(linesFor(withArcs(-std::numbers::pi, 1.0)), 1U);
}

TEST(RuledScreenTolerance, RaysNeedALengthThatSpansAnAreaWithTheRuling) {
    // The squared area is (ray's length * ruling's length of 2)^2, which has to reach 1e-10.
    const OpenRuledScreen screen(kQuarters);
    const auto hitsWith = [&](double y) {
        return screen.intersect(Point3(0, 0, 0), Point3(0, y, 0)).count();
    };
    EXPECT_EQ(hitsWith(5.001e-6), 1);
    EXPECT_EQ(hitsWith(4.999e-6), 0);
    EXPECT_EQ(hitsWith(0.0), 0);
}

TEST(RuledScreenTolerance, ScreensLowerThanAHundredThousandthHaveNoUV) {
    const auto uvAt = [](double height) {
        return OpenRuledScreen(2.0, height, -0.5, 0.5, -0.5, 0.5).mapInto2D(Point3(0, 0, 0), false);
    };
    EXPECT_NEAR(uvAt(1.001e-5)[1], 0.5, 1e-9);
    EXPECT_TRUE(sameBits(uvAt(0.999e-5), Point2(0, 0)));
    EXPECT_TRUE(sameBits(uvAt(0.0), Point2(0, 0)));
}
