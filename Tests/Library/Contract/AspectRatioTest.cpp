#include <gtest/gtest.h>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/ScreenUtils.h>

#include <limits>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/ScriptedScreen.h"

using namespace quarn::test;

namespace {

// A screen that maps (u, v) to (width u, 0, -height v), with a list of all its queries.
class RectangleScreen : public ScriptedScreen {
public:
    struct Call {
        Point2 uv;
        Point3 before;
        bool extrapolate;
    };
    std::vector<Call> asked;
    double width = 3.0;
    double height = 2.0;

    RectangleScreen() {
        onMapInto3D = [this](const Point2& uv, Point3& point, bool extrapolate) {
            asked.push_back({uv, point, extrapolate});
            point = Point3(width * uv[0], 0.0, -height * uv[1]);
            return true;
        };
    }
    // Answers as before, but false where `refuses` says so.
    template <class Refuses>
    void refuseWhere(Refuses refuses) {
        onMapInto3D = [this, refuses, plain = onMapInto3D](const Point2& uv, Point3& point,
                                                           bool extrapolate) {
            return plain(uv, point, extrapolate) && !refuses(uv);
        };
    }
};

// The number of a cell, in the order of the queries, by any of its three UV.
int cellOf(const Point2& uv) {
    return static_cast<int>(uv[0] * 5 + 1e-9) * 5 + static_cast<int>(uv[1] * 5 + 1e-9);
}

}  // namespace

TEST(AspectRatio, FlatScreenOfFourByThree) {
    FlatScreen screen(4.0, 3.0);
    // Positions round to 2^-53 of 2, steps are 0.0012 and longer.
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(screen), 4.0 / 3.0, 1e-12);
}

TEST(AspectRatio, CylinderGivesArcLengthOverHeight) {
    CylinderScreen screen(Point3(0, 0, 0), 1.0, -0.5, 0.5, 2.0);
    // A chord of 0.0004 radians is shorter than its arc by 0.0004^2 / 24.
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(screen), 0.5, 1e-8);
}

TEST(AspectRatio, RuledScreenGivesArcLengthOverHeight) {
    OpenRuledScreen screen(2.0, 3.0, kQuarters.minTheta, kQuarters.maxTheta, kQuarters.minPhi,
                           kQuarters.maxPhi);
    // Chords of 0.0004 times a quarter circle are shorter than their arcs by that squared over 24:
    // 1.7e-8.
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(screen), std::numbers::pi / std::numbers::sqrt2 / 3.0,
                2e-8);
}

TEST(AspectRatio, QueriesThreePositionsOfTwentyFiveCellsInOrder) {
    RectangleScreen screen;
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(screen), 1.5, 1e-9);
    ASSERT_EQ(screen.asked.size(), 75U);
    std::size_t k = 0;
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j) {
            const Point2 low(i / 5.0, j / 5.0);
            const Point2 high((i + 0.002) / 5.0, (j + 0.002) / 5.0);
            for (const Point2& uv : {low, Point2(high[0], low[1]), Point2(low[0], high[1])}) {
                EXPECT_TRUE(sameBits(screen.asked[k].uv, uv)) << k;
                EXPECT_TRUE(sameBits(screen.asked[k].before, Point3(0, 0, 0))) << k;
                EXPECT_FALSE(screen.asked[k].extrapolate) << k;
                ++k;
            }
        }
    EXPECT_EQ(screen.calls, std::vector<std::string>(75, "mapInto3D")) << "and nothing else";
}

TEST(AspectRatio, CellIsLeftAtItsFirstRefusal) {
    RectangleScreen screen;
    // The first cell refuses its corner, the second the step in u, the third the step in v.
    screen.refuseWhere([](const Point2& uv) {
        return (cellOf(uv) == 0 && uv[0] == 0.0 && uv[1] == 0.0) || (cellOf(uv) == 1 && uv[0] > 0.0) ||
               (cellOf(uv) == 2 && uv[1] > 0.4);
    });
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(screen), 1.5, 1e-9);
    EXPECT_EQ(screen.asked.size(), 1U + 2U + 3U + 22U * 3U);
}

TEST(AspectRatio, FiveCellsAreEnoughAndFourAreNot) {
    for (const int usable : {0, 1, 4, 5, 6}) {
        RectangleScreen screen;
        screen.refuseWhere(
            [usable](const Point2& uv) { return cellOf(uv) % 4 != 0 || cellOf(uv) / 4 >= usable; });
        const double ratio = ScreenUtils::estimateAspectRatioUV(screen);
        if (usable >= 5)
            EXPECT_NEAR(ratio, 1.5, 1e-9) << usable;
        else
            EXPECT_EQ(ratio, 1.0) << usable;
    }
}

TEST(AspectRatio, ScreenWithoutUVGivesOne) {
    RectangleScreen screen;
    screen.refuseWhere([](const Point2&) { return true; });
    EXPECT_EQ(ScreenUtils::estimateAspectRatioUV(screen), 1.0);
    EXPECT_EQ(screen.asked.size(), 25U);
}

TEST(AspectRatio, SurfaceOfNoHeightOrNoWidthGivesOne) {
    RectangleScreen low;
    low.height = 0.0;
    EXPECT_EQ(ScreenUtils::estimateAspectRatioUV(low), 1.0);
    EXPECT_EQ(low.asked.size(), 75U);
    RectangleScreen narrow;
    narrow.width = 0.0;
    EXPECT_EQ(ScreenUtils::estimateAspectRatioUV(narrow), 1.0);
}

TEST(AspectRatio, CellsWithoutAStepAreLeftOutOfBothSums) {
    RectangleScreen screen;
    // In all cells but five a step in u stands still, and a step in v is long.
    screen.onMapInto3D = [](const Point2& uv, Point3& point, bool) {
        const bool isGood = cellOf(uv) < 5;
        point = Point3(isGood ? 3.0 * uv[0] : 0.0, 0.0, isGood ? uv[1] : 100.0 * uv[1]);
        return true;
    };
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(screen), 3.0, 1e-9);
}

TEST(AspectRatio, DividesTheSumsAndNotTheSteps) {
    RectangleScreen screen;
    // Steps of 1 and 1 in the first five cells, of 3 and 1 in the next; others refuse.
    screen.onMapInto3D = [](const Point2& uv, Point3& point, bool) {
        const double factor = cellOf(uv) < 5 ? 1.0 : 3.0;
        const bool isStepU = uv[0] != std::floor(uv[0] * 5 + 1e-9) / 5.0;
        const bool isStepV = uv[1] != std::floor(uv[1] * 5 + 1e-9) / 5.0;
        point = Point3(isStepU ? factor : 0.0, 0.0, isStepV ? 1.0 : 0.0);
        return cellOf(uv) < 10;
    };
    EXPECT_EQ(ScreenUtils::estimateAspectRatioUV(screen), (5.0 * 1.0 + 5.0 * 3.0) / 10.0);
}

TEST(AspectRatio, StepsAreMeasuredInSpace) {
    RectangleScreen screen;
    screen.onMapInto3D = [](const Point2& uv, Point3& point, bool) {
        point = Point3(2.0 * uv[0], 3.0 * uv[0], 6.0 * uv[0]) + Point3(4.0 * uv[1], -3.0 * uv[1], 0.0);
        return true;
    };
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(screen), 7.0 / 5.0, 1e-9);
}

TEST(AspectRatio, NaNReachesTheResult) {
    for (const int poisoned : {0, 24}) {
        RectangleScreen screen;
        screen.refuseWhere([](const Point2&) { return false; });
        screen.onMapInto3D = [poisoned, plain = screen.onMapInto3D](const Point2& uv, Point3& point,
                                                                    bool extrapolate) {
            plain(uv, point, extrapolate);
            if (cellOf(uv) == poisoned) point[1] = std::numeric_limits<double>::quiet_NaN();
            return true;
        };
        EXPECT_TRUE(std::isnan(ScreenUtils::estimateAspectRatioUV(screen)));
    }
}
