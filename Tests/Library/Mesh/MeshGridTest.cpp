#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/LogCapture.h"
#include "Support/Mesh/BoundaryScreens.h"
#include "Support/Mesh/OverriddenScreen.h"

using namespace quarn::test;
using Polylines = IScreenGeometry::Polylines;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A flat sheet of 4 x 3 whose UV fills the square from 1/4 to 3/4.
Mesh innerSheet() {
    Mesh mesh = flatGrid({4, 4});
    squeezeUV(mesh, 0.25, 0.75);
    return mesh;
}

Polylines gridOf(const MeshScreen& screen, int density) {
    Polylines grid;
    screen.sampleGrid(grid, density);
    return grid;
}

// A screen on which each UV maps to (u, 0, v), within the given boundary.
void mapByReference(OverriddenScreen& screen, const std::vector<Point2>& outline) {
    screen.onSampleBoundaryUV = [outline](std::vector<Point2>& out) { out = outline; };
    screen.onMapInto3D = [](const Point2& uv, Point3& point, bool) {
        point = {uv[0], 0.0, uv[1]};
        return true;
    };
}

}  // namespace

TEST(MeshGrid, BeginsWithTheOutlineWhichGetsItsFirstPointOnceMore) {
    const TriangleScreen screen(flatGrid({2, 1}));
    const auto outline = gridOf(screen, 2).front();
    ASSERT_EQ(outline.size(), screen.outline().points.size() + 1);
    ASSERT_EQ(outline.size(), 8U);
    EXPECT_EQ(outline[0], outline[6]);
    EXPECT_EQ(outline[6], outline[7]);
    for (std::size_t i = 0; i < 7; ++i) EXPECT_EQ(outline[i], screen.outline().points[i]);
}

TEST(MeshGrid, HasTheLinesOfConstantVBeforeThoseOfConstantU) {
    const TriangleScreen screen(flatGrid({5, 5}));
    const Polylines grid = gridOf(screen, 3);
    ASSERT_EQ(grid.size(), 7U);
    for (std::size_t line = 0; line < 3; ++line) {
        ASSERT_EQ(grid[1 + line].size(), 30U);
        ASSERT_EQ(grid[4 + line].size(), 30U);
        const double part = static_cast<double>(line) / 2.0;
        for (std::size_t j = 0; j < 30; ++j) {
            const double along = static_cast<double>(j) / 29.0;
            EXPECT_NEAR(grid[1 + line][j][0], 4.0 * along - 2.0, 1e-12);
            EXPECT_NEAR(grid[1 + line][j][2], 1.5 - 3.0 * part, 1e-12);
            EXPECT_NEAR(grid[4 + line][j][0], 4.0 * part - 2.0, 1e-12);
            EXPECT_NEAR(grid[4 + line][j][2], 1.5 - 3.0 * along, 1e-12);
        }
    }
}

TEST(MeshGrid, OfDensityOneHasOneEmptyPieceEachWay) {
    const TriangleScreen screen(flatGrid({2, 2}));
    const Polylines grid = gridOf(screen, 1);
    ASSERT_EQ(grid.size(), 3U);
    EXPECT_EQ(grid[0].size(), 10U);
    EXPECT_TRUE(grid[1].empty());
    EXPECT_TRUE(grid[2].empty());
}

TEST(MeshGrid, OfNoOrNegativeDensityIsTheOutlineAlone) {
    const TriangleScreen screen(flatGrid({2, 2}));
    for (const int density : {3, 0, -1, std::numeric_limits<int>::min()}) {
        const Polylines grid = gridOf(screen, density);
        EXPECT_EQ(grid.size(), density > 0 ? 7U : 1U);
        EXPECT_EQ(grid[0].size(), 10U);
    }
}

TEST(MeshGrid, ReplacesWhatTheCallerPasses) {
    const TriangleScreen screen(flatGrid({2, 2}));
    Polylines grid(20, {Point3(1.0, 2.0, 3.0)});
    screen.sampleGrid(grid, 2);
    EXPECT_EQ(grid.size(), 5U);
    EXPECT_EQ(grid[1].size(), 30U);
}

TEST(MeshGrid, OfALineWhollyOutsideIsOneEmptyPiece) {
    const TriangleScreen screen(innerSheet());
    const Polylines grid = gridOf(screen, 2);
    ASSERT_EQ(grid.size(), 5U);
    for (std::size_t i = 1; i < grid.size(); ++i) EXPECT_TRUE(grid[i].empty()) << i;
}

TEST(MeshGrid, OfALineThatStartsOutsideHasAnEmptyPieceAndOneFromTheCrossingOn) {
    const TriangleScreen screen(innerSheet());
    const Polylines grid = gridOf(screen, 3);
    // Each way: the outer lines are outside, that in the middle comes in and goes out again.
    ASSERT_EQ(grid.size(), 9U);
    for (const std::size_t empty : {1U, 2U, 4U, 5U, 6U, 8U}) EXPECT_TRUE(grid[empty].empty()) << empty;
    // Samples 8/29 to 21/29 lie inside; a crossing on either side is added.
    ASSERT_EQ(grid[3].size(), 16U);
    EXPECT_NEAR(grid[3].front()[0], -2.0, 1e-12);
    EXPECT_NEAR(grid[3][1][0], (8.0 / 29.0 - 0.25) * 8.0 - 2.0, 1e-12);
    EXPECT_NEAR(grid[3].back()[0], 2.0, 1e-12);
    EXPECT_NEAR(grid[3].back()[2], 0.0, 1e-12);
    ASSERT_EQ(grid[7].size(), 16U);
    EXPECT_NEAR(grid[7].front()[2], 1.5, 1e-12);
    EXPECT_NEAR(grid[7].back()[2], -1.5, 1e-12);
}

TEST(MeshGrid, OfALineThatLeavesAndReentersHasTwoPieces) {
    const TriangleScreen screen(notchedGrid({6, 6}));
    const Polylines grid = gridOf(screen, 4);
    // The lines at v = 0 and v = 1/3 meet the notch from u = 1/3 to u = 2/3.
    ASSERT_GE(grid.size(), 11U);
    EXPECT_EQ(grid[3].size() + grid[4].size(), 22U);
    EXPECT_NEAR(grid[3].front()[0], -2.0, 1e-12);
    EXPECT_NEAR(grid[3].back()[0], 4.0 / 3.0 - 2.0, 1e-9);
    EXPECT_NEAR(grid[4].front()[0], 8.0 / 3.0 - 2.0, 1e-9);
    EXPECT_NEAR(grid[4].back()[0], 2.0, 1e-12);
}

TEST(MeshGrid, PassesOverASegmentWithBothEndsOutside) {
    OverriddenScreen screen;
    // A tongue between two samples of each line of constant v.
    mapByReference(screen, rectangleUV({0.36, 0.0}, {0.37, 1.0}));
    const Polylines grid = gridOf(screen, 4);
    ASSERT_EQ(grid.size(), 9U);
    for (std::size_t i = 0; i < grid.size(); ++i) EXPECT_TRUE(grid[i].empty()) << i;
}

TEST(MeshGrid, OfAMeshWithoutOutlineIsAnEmptyOutlineAndAnEmptyPieceForEachLine) {
    const quarn::test::LogCapture log(L"Quarn.QuarnScreen.ScreenGeometry", log4cxx::Level::getInfo());
    const TriangleScreen screen;
    EXPECT_EQ(gridOf(screen, 4), Polylines(9));
    Mesh twice = flatGrid({2, 2});
    const Mesh once = twice;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(gridOf(TriangleScreen(twice), 4), Polylines(9));
    EXPECT_TRUE(log.records().empty());
}

TEST(MeshGrid, DropsPointsThatDoNotMapButKeepsTheirLines) {
    OverriddenScreen screen;
    mapByReference(screen, rectangleUV({0.0, 0.0}, {1.0, 1.0}));
    int calls = 0;
    screen.onMapInto3D = [&](const Point2& uv, Point3& point, bool extrapolate) {
        ++calls;
        EXPECT_TRUE(extrapolate);
        point = {uv[0], uv[1], 7.0};
        return uv[0] < 0.5 && uv[1] < 0.5;
    };
    const Polylines grid = gridOf(screen, 3);
    EXPECT_EQ(calls, 6 * 30);
    ASSERT_EQ(grid.size(), 7U);
    EXPECT_EQ(grid[1].size(), 15U);
    EXPECT_TRUE(grid[2].empty());
    EXPECT_TRUE(grid[3].empty());
    EXPECT_EQ(grid[4].size(), 15U);
    EXPECT_TRUE(grid[5].empty());
}

TEST(MeshGrid, OfAScreenWithoutParameterisationHasItsLinesEmpty) {
    TriangleScreen screen(flatGrid({2, 2}));
    screen.parameterized = false;
    const Polylines grid = gridOf(screen, 2);
    ASSERT_EQ(grid.size(), 5U);
    EXPECT_EQ(grid[0].size(), 10U);
    for (std::size_t i = 1; i < grid.size(); ++i) EXPECT_TRUE(grid[i].empty()) << i;
}

TEST(MeshGrid, JoinsAllPolylinesOfAnOverriddenOutline) {
    OverriddenScreen screen;
    const Point3 a(1.0, 0.0, 0.0);
    const Point3 b(2.0, 0.0, 0.0);
    const Point3 c(3.0, 0.0, kNaN);
    screen.onSampleBoundary = [&](Polylines& out) {
        EXPECT_TRUE(out.empty());
        out = {{}, {a, b}, {}, {c}};
    };
    const Polylines grid = gridOf(screen, -1);
    ASSERT_EQ(grid.size(), 1U);
    EXPECT_TRUE(sameBits(grid[0], {a, b, c, a}));
}

TEST(MeshGrid, KeepsACrossingsPieceWhereNoSegmentMeetsTheLine) {
    OverriddenScreen screen;
    // Two points make a segment without inside; only the samples on it are within the boundary.
    mapByReference(screen, {{0.0, 0.0}, {0.1, 0.0}});
    const Polylines grid = gridOf(screen, 2);
    ASSERT_EQ(grid.size(), 5U);
    // v = 0: samples 0, 1 and 2, and the point where the line leaves the segment that it runs along
    // does not exist.
    ASSERT_EQ(grid[1].size(), 3U);
    EXPECT_EQ(grid[1][2], Point3(2 * 0.034482758620689655, 0.0, 0.0));
    EXPECT_TRUE(grid[2].empty());
    // u = 0: the first sample, then the crossing at that same place.
    EXPECT_EQ(grid[3], (std::vector<Point3>{{}, {}}));
}
