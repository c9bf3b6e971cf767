#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/OverriddenScreen.h"

using namespace quarn::test;
using Polylines = IScreenGeometry::Polylines;

namespace {

Polylines gridOf(const MeshScreen& screen, int density) {
    Polylines grid(3, {Point3(9.0, 9.0, 9.0)});
    screen.sampleGrid(grid, density);
    return grid;
}

// A flat screen that counts the positions that it maps.
class CountingScreen : public OverriddenScreen {
public:
    CountingScreen() {
        load(flatGrid({3, 3}));
        onMapInto3D = [this](const Point2& uv, Point3& point, bool extrapolate) {
            ++maps;
            return ownMapInto3D(uv, point, extrapolate);
        };
    }
    int maps = 0;
};

constexpr int kMapsPerDensity = 60;

}  // namespace

TEST(MeshGridCache, IsEmptyAndCountsAsMadeForDensityZeroAtFirst) {
    const CountingScreen screen;
    EXPECT_TRUE(gridOf(screen, 0).empty());
}

TEST(MeshGridCache, ASecondCallOfTheSameDensityComputesNothing) {
    const CountingScreen screen;
    const Polylines first = gridOf(screen, 4);
    EXPECT_EQ(screen.maps, 4 * kMapsPerDensity);
    EXPECT_EQ(gridOf(screen, 4), first);
    EXPECT_EQ(screen.maps, 4 * kMapsPerDensity);
}

TEST(MeshGridCache, AnotherDensityIsComputedAndOnlyTheLastIsKept) {
    const CountingScreen screen;
    (void)gridOf(screen, 4);
    EXPECT_EQ(gridOf(screen, 2).size(), 5U);
    EXPECT_EQ(screen.maps, 6 * kMapsPerDensity);
    EXPECT_EQ(gridOf(screen, 4).size(), 9U);
    EXPECT_EQ(screen.maps, 10 * kMapsPerDensity);
    EXPECT_EQ(gridOf(screen, 0).size(), 1U);
    EXPECT_EQ(gridOf(screen, -2).size(), 1U);
}

TEST(MeshGridCache, CalculatingAGridDirectlyLeavesTheKeptOne) {
    const CountingScreen screen;
    const Polylines kept = gridOf(screen, 3);
    EXPECT_EQ(screen.calculateGrid(5).size(), 11U);
    EXPECT_EQ(screen.maps, 8 * kMapsPerDensity);
    EXPECT_EQ(gridOf(screen, 3), kept);
    EXPECT_EQ(screen.maps, 8 * kMapsPerDensity);
}

TEST(MeshGridCache, EveryChangeOfTheMeshLetsTheNextCallCompute) {
    CountingScreen screen;
    int expected = 0;
    const auto computes = [&] {
        (void)gridOf(screen, 2);
        expected += 2 * kMapsPerDensity;
        return screen.maps == expected;
    };
    EXPECT_TRUE(computes());
    screen.applyTransform({1.0, 0.0, 0.0}, {}, 1.0);
    EXPECT_TRUE(computes());
    screen.applyParameterizationTransform(true, false);
    EXPECT_TRUE(computes());
    screen.refine(10.0);
    EXPECT_TRUE(computes());
    screen.load(flatGrid({2, 2}));
    EXPECT_TRUE(computes());
    screen.applyParameterizationTransform(false, false);
    (void)gridOf(screen, 2);
    EXPECT_EQ(screen.maps, expected);
}

TEST(MeshGridCache, DensityZeroAfterARebuildGivesTheOldGrid) {
    CountingScreen screen;
    const Polylines old = gridOf(screen, 2);
    screen.applyTransform({0.0, 100.0, 0.0}, {}, 1.0);
    EXPECT_EQ(gridOf(screen, 0), old);
    EXPECT_NE(gridOf(screen, 2), old);
}

TEST(MeshGridCache, AFailedComputationLeavesTheOldGridUnderTheNewDensity) {
    CountingScreen screen;
    const Polylines old = gridOf(screen, 2);
    const auto map = screen.onMapInto3D;
    screen.onMapInto3D = [](const Point2&, Point3&, bool) -> bool { throw std::runtime_error("no"); };
    EXPECT_THROW((void)gridOf(screen, 3), std::runtime_error);
    EXPECT_EQ(gridOf(screen, 3), old);
    screen.onMapInto3D = map;
    EXPECT_EQ(gridOf(screen, 3), old);

    // The lock is free again, for another thread too.
    std::jthread([&] { EXPECT_EQ(gridOf(screen, 4).size(), 9U); }).join();
    EXPECT_EQ(gridOf(screen, 3).size(), 7U);
}

TEST(MeshGridCache, LeavesTheCallersGridWhereAComputationFails) {
    CountingScreen screen;
    screen.onSampleBoundary = [](Polylines&) { throw std::runtime_error("no"); };
    Polylines grid(1, {Point3(1.0, 2.0, 3.0)});
    EXPECT_THROW(screen.sampleGrid(grid, 3), std::runtime_error);
    EXPECT_EQ(grid, Polylines(1, {Point3(1.0, 2.0, 3.0)}));
}

TEST(MeshGridCache, AQuestionForTheSameDensityFromWithinGetsTheOldGrid) {
    CountingScreen screen;
    const Polylines old = gridOf(screen, 2);
    Polylines inner;
    screen.onSampleBoundary = [&](Polylines& out) {
        inner = gridOf(screen, 3);
        screen.TriangleScreen::sampleBoundary(out);
    };
    EXPECT_EQ(gridOf(screen, 3).size(), 7U);
    EXPECT_EQ(inner, old);
}

TEST(MeshGridCache, AQuestionForAnotherDensityFromWithinLeavesItsDensityWithTheOuterGrid) {
    CountingScreen screen;
    bool isInner = false;
    screen.onSampleBoundary = [&](Polylines& out) {
        if (!isInner) {
            isInner = true;
            EXPECT_EQ(gridOf(screen, 5).size(), 11U);
        }
        screen.TriangleScreen::sampleBoundary(out);
    };
    const Polylines outer = gridOf(screen, 3);
    EXPECT_EQ(outer.size(), 7U);
    EXPECT_EQ(gridOf(screen, 5), outer);
    EXPECT_EQ(screen.maps, 8 * kMapsPerDensity);
    EXPECT_EQ(gridOf(screen, 3).size(), 7U);
    EXPECT_EQ(screen.maps, 11 * kMapsPerDensity);
}
