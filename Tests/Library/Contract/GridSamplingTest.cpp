#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Reference/Shapes/ReferenceContract.h"
#include "Support/ScriptedScreen.h"

using namespace quarn::test;

namespace {

constexpr int kMinInt = std::numeric_limits<int>::min();

using Polylines = IScreenGeometry::Polylines;

Polylines gridOf(const ScreenGeometry& screen, int density) {
    Polylines grid{{Point3(9, 9, 9)}, {}};
    screen.sampleGrid(grid, density);
    return grid;
}

// The UVs of a screen's queries.
std::vector<Point2> queriedUVs(int density) {
    std::vector<Point2> uvs;
    ScriptedScreen screen;
    screen.onMapInto3D = [&](const Point2& uv, Point3& point, bool extrapolate) {
        EXPECT_TRUE(extrapolate);
        EXPECT_TRUE(sameBits(point, Point3()));
        uvs.push_back(uv);
        point = Point3(7, 7, 7);
        return true;
    };
    gridOf(screen, density);
    return uvs;
}

}  // namespace

TEST(GridSampling, EvenDensityIsRoundedUp) {
    const FlatScreen screen(4.0, 3.0);
    const Polylines four = gridOf(screen, 4);
    const Polylines five = gridOf(screen, 5);
    ASSERT_EQ(four.size(), 1U);
    EXPECT_EQ(four[0].size(), 234U);
    EXPECT_TRUE(sameBits(four, five));
    EXPECT_EQ(gridOf(screen, 2)[0].size(), 138U);
}

TEST(GridSampling, CountOfPointsFollowsTheNumberOfLines) {
    const FlatScreen screen(4.0, 3.0);
    for (const int density : {1, 2, 3, 4, 5, 6, 7, 49, 50, 51}) {
        const int lines = density + 1 - density % 2;
        const Polylines grid = gridOf(screen, density);
        ASSERT_EQ(grid.size(), 1U) << density;
        EXPECT_EQ(grid[0].size(), static_cast<std::size_t>(2 * (21 * lines + 3 * (lines - 1)))) << density;
    }
}

TEST(GridSampling, NegativeDensityGivesOneEmptyPolyline) {
    const FlatScreen screen(4.0, 3.0);
    for (const int density : {-1, -2, -3, -50, kMinInt, kMinInt + 1, kMinInt + 2}) {
        const Polylines grid = gridOf(screen, density);
        ASSERT_EQ(grid.size(), 1U) << density;
        EXPECT_TRUE(grid[0].empty()) << density;
    }
}

TEST(GridSampling, OneLineHasNaNForItsPlaceAndNoConnectingSteps) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const int density : {0, 1}) {
        const auto uvs = queriedUVs(density);
        ASSERT_EQ(uvs.size(), 42U);
        for (std::size_t i = 0; i < 21; ++i) {
            const double s = static_cast<double>(i) * 0.05;
            EXPECT_TRUE(sameBits(uvs[i], Point2(nan, s)));
            EXPECT_TRUE(sameBits(uvs[21 + i], Point2(1.0 - s, nan)));
        }
        EXPECT_EQ(gridOf(FlatScreen(4.0, 3.0), density)[0].size(), 42U);
    }
}

TEST(GridSampling, PathStartsAndEndsAtTheTopLeftCorner) {
    const FlatScreen screen(4.0, 3.0);
    for (const int density : {2, 3, 4, 5}) {
        const Polylines grid = gridOf(screen, density);
        EXPECT_TRUE(sameBits(grid[0].front(), Point3(-2, 0, 1.5)));
        EXPECT_TRUE(sameBits(grid[0].back(), Point3(-2, 0, 1.5)));
    }
}

TEST(GridSampling, SecondPassBeginsWhereTheFirstEnds) {
    for (const int density : {2, 5, 50}) {
        const auto uvs = queriedUVs(density);
        const std::size_t half = uvs.size() / 2;
        EXPECT_TRUE(sameBits(uvs[half - 1], Point2(1, 1)));
        EXPECT_TRUE(sameBits(uvs[half], Point2(1, 1)));
        EXPECT_TRUE(sameBits(uvs.back(), uvs.front()));
    }
}

TEST(GridSampling, PathMovesAlongOneDirectionAtATime) {
    // A step's fractions carry a few roundings of numbers up to 1.
    constexpr double kRounding = 8.0 * std::numeric_limits<double>::epsilon();
    for (const int density : {3, 5, 9}) {
        const auto uvs = queriedUVs(density);
        const double betweenLines = 0.25 / (density - 1);
        for (std::size_t i = 1; i < uvs.size(); ++i) {
            SCOPED_TRACE(i);
            if (i == uvs.size() / 2) continue;  // both passes hold this place
            const double du = std::abs(uvs[i][0] - uvs[i - 1][0]);
            const double dv = std::abs(uvs[i][1] - uvs[i - 1][1]);
            EXPECT_LE(std::min(du, dv), kRounding);
            const double way = std::max(du, dv);
            EXPECT_LE(std::min(std::abs(way - 0.05), std::abs(way - betweenLines)), kRounding);
        }
    }
}

TEST(GridSampling, EveryGridLineIsVisitedFromEndToEnd) {
    constexpr double kRounding = 8.0 * std::numeric_limits<double>::epsilon();
    constexpr int kLines = 7;
    const auto uvs = queriedUVs(kLines);
    for (const std::size_t across : {std::size_t{0}, std::size_t{1}}) {
        for (int line = 0; line < kLines; ++line) {
            for (int j = 0; j <= 20; ++j) {
                const double place = static_cast<double>(line) / (kLines - 1);
                const double along = j / 20.0;
                const bool isVisited = std::any_of(uvs.begin(), uvs.end(), [&](const Point2& uv) {
                    return std::abs(uv[across] - place) <= kRounding &&
                           std::abs(uv[1 - across] - along) <= kRounding;
                });
                EXPECT_TRUE(isVisited) << "line " << line << " place " << j;
            }
        }
    }
}

TEST(GridSampling, EveryUVEqualsTheReferenceBitForBit) {
    for (int density = -3; density <= 60; ++density) {
        SCOPED_TRACE(density);
        EXPECT_TRUE(sameBits(queriedUVs(density), gridPath(density)));
    }
}

TEST(GridSampling, RefusedSamplesAreSkipped) {
    ScriptedScreen screen;
    std::vector<Point3> expected;
    screen.onMapInto3D = [&](const Point2& uv, Point3& point, bool) {
        point = Point3(uv[0], 5.0, uv[1]);
        if (uv[0] > 0.5) return false;
        expected.push_back(point);
        return true;
    };
    const Polylines grid = gridOf(screen, 3);
    ASSERT_EQ(grid.size(), 1U);
    EXPECT_LT(grid[0].size(), 138U);
    EXPECT_TRUE(sameBits(grid[0], expected));
}

TEST(GridSampling, ScreenThatMapsNothingGivesOneEmptyPolyline) {
    ScriptedScreen screen;
    screen.onMapInto3D = [](const Point2&, Point3&, bool) { return false; };
    EXPECT_TRUE(sameBits(gridOf(screen, 5), Polylines(1)));
}

TEST(GridSampling, ScreenWithoutUVLeavesTheGridAsItWas) {
    ScriptedScreen screen;
    screen.parameterized = false;
    const Polylines before{{Point3(9, 9, 9)}, {}};
    for (const int density : {-2, 0, 5}) EXPECT_TRUE(sameBits(gridOf(screen, density), before));
    EXPECT_TRUE(screen.calls.empty());
}
