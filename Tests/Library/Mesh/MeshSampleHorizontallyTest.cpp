#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "Reference/Mesh/ReferenceGrid.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/OverriddenScreen.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;
using GridSamples = IScreenGeometry::GridSamples;

TEST(MeshSampleHorizontally, StoresTheSamplesUnderTheirColumnAndRow) {
    const TriangleScreen screen(flatGrid({4, 4}));
    GridSamples samples;
    screen.sampleHorizontally(0.25, 0.0, 1.0, 3, 7, samples, false);
    ASSERT_EQ(samples.size(), 3U);
    for (int i = 0; i < 3; ++i) EXPECT_EQ((samples[{i, 7}]), Point3(2.0 * i - 2.0, 0.0, 0.75));
}

TEST(MeshSampleHorizontally, ReplacesWhatIsUnderAKeyAndLeavesTheRest) {
    const TriangleScreen screen(flatGrid({4, 4}));
    const Point3 old(9.0, 9.0, 9.0);
    GridSamples samples = {{{0, 0}, old}, {{1, 0}, old}, {{2, 0}, old}, {{5, 0}, old}, {{0, 1}, old}};
    screen.sampleHorizontally(0.5, 0.0, 1.5, 4, 0, samples, false);
    ASSERT_EQ(samples.size(), 5U);
    EXPECT_EQ((samples[{0, 0}]), Point3(-2.0, 0.0, 0.0));
    EXPECT_EQ((samples[{1, 0}]), Point3(0.0, 0.0, 0.0));
    EXPECT_EQ((samples[{2, 0}]), Point3(2.0, 0.0, 0.0));
    EXPECT_EQ((samples[{5, 0}]), old);
    EXPECT_EQ((samples[{0, 1}]), old);
}

TEST(MeshSampleHorizontally, KeepsSamplesOffTheMeshWhereItExtrapolates) {
    const TriangleScreen screen(flatGrid({4, 4}));
    GridSamples samples;
    screen.sampleHorizontally(0.5, -0.5, 1.5, 5, 0, samples, true);
    ASSERT_EQ(samples.size(), 5U);
    EXPECT_NEAR((samples[{0, 0}][0]), -4.0, 1e-12);
    EXPECT_NEAR((samples[{4, 0}][0]), 4.0, 1e-12);
}

TEST(MeshSampleHorizontally, OfNoOrNegativeCountDoesNothing) {
    OverriddenScreen screen(flatGrid({4, 4}));
    screen.onMapInto3D = [](const Point2&, Point3&, bool) {
        ADD_FAILURE();
        return true;
    };
    GridSamples samples = {{{0, 0}, Point3(9.0, 9.0, 9.0)}};
    const GridSamples before = samples;
    for (const int count : {0, -1, std::numeric_limits<int>::min()})
        screen.sampleHorizontally(0.5, 0.0, 1.0, count, 0, samples, true);
    EXPECT_TRUE(sameBits(samples, before));
}

TEST(MeshSampleHorizontally, OfCountOnePassesNaNAsU) {
    OverriddenScreen screen;
    Point2 asked;
    bool flag = false;
    screen.onMapInto3D = [&](const Point2& uv, Point3& point, bool extrapolate) {
        EXPECT_EQ(point, Point3());
        asked = uv;
        flag = extrapolate;
        return false;
    };
    GridSamples samples;
    screen.sampleHorizontally(0.25, 0.0, 1.0, 1, 0, samples, true);
    EXPECT_TRUE(sameBits(asked, Point2(std::nan(""), 0.25)));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(samples.empty());
}

TEST(MeshSampleHorizontally, PassesAZeroPositionEachTime) {
    OverriddenScreen screen;
    screen.onMapInto3D = [&](const Point2&, Point3& point, bool) {
        EXPECT_EQ(point, Point3());
        point = {1.0, 2.0, 3.0};
        return false;
    };
    GridSamples samples;
    screen.sampleHorizontally(0.5, 0.0, 1.0, 4, 0, samples, false);
    EXPECT_TRUE(samples.empty());
}

TEST(MeshSampleHorizontally, QueriesTheUVOfTheReferenceForAnyNumbers) {
    const auto map = [](const Point2& uv, Point3& point) {
        point = {uv[0], uv[1], 5.0};
        return !(uv[0] < 0.0);
    };
    OverriddenScreen screen;
    screen.onMapInto3D = [&](const Point2& uv, Point3& point, bool) { return map(uv, point); };
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double v = wildNumber(rng);
        const double uStart = wildNumber(rng);
        const double uEnd = wildNumber(rng);
        const int count = rng.integer(-1, 12);
        const int row = rng.integer(-3, 3);
        GridSamples samples;
        screen.sampleHorizontally(v, uStart, uEnd, count, row, samples, false);
        ASSERT_TRUE(sameBits(samples, referenceRow(map, v, uStart, uEnd, count, row)));
    }
}
