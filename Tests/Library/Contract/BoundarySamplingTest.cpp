#include <gtest/gtest.h>

#include <cmath>

#include <QuarnScreen/FlatScreen.h>

#include "Reference/Shapes/ReferenceContract.h"
#include "Support/ScriptedScreen.h"

using namespace quarn::test;

namespace {

using Polylines = IScreenGeometry::Polylines;

}  // namespace

TEST(BoundarySampling, EveryUVEqualsTheReferenceAndIsQueriedWithExtrapolation) {
    std::vector<Point2> asked;
    ScriptedScreen screen;
    screen.onMapInto3D = [&](const Point2& uv, Point3& point, bool extrapolate) {
        EXPECT_TRUE(extrapolate);
        EXPECT_TRUE(sameBits(point, Point3()));
        asked.push_back(uv);
        point = Point3(uv[0], 7.0, uv[1]);
        return true;
    };
    Polylines boundary;
    screen.sampleBoundary(boundary);

    std::vector<Point2> path;
    Polylines positions;
    for (const auto& edge : boundaryPath()) {
        positions.emplace_back();
        for (const Point2& uv : edge) {
            path.push_back(uv);
            positions.back().emplace_back(uv[0], 7.0, uv[1]);
        }
    }
    EXPECT_TRUE(sameBits(asked, path));
    EXPECT_TRUE(sameBits(boundary, positions));
}

TEST(BoundarySampling, AllEightyPointsOfAFlatScreenArrive) {
    const FlatScreen screen(4.0, 3.0);
    Polylines boundary;
    screen.sampleBoundary(boundary);
    ASSERT_EQ(boundary.size(), 4U);
    for (const auto& edge : boundary) EXPECT_EQ(edge.size(), 20U);
    EXPECT_TRUE(sameBits(boundary[0].front(), Point3(-2, 0, 1.5)));
    EXPECT_TRUE(sameBits(boundary[1].front(), Point3(-2, 0, -1.5)));
    EXPECT_TRUE(sameBits(boundary[2].front(), Point3(2, 0, -1.5)));
    EXPECT_TRUE(sameBits(boundary[3].front(), Point3(2, 0, 1.5)));
}

TEST(BoundarySampling, OutlineRunsAnticlockwiseAndVisitsNoPointTwice) {
    const FlatScreen screen(4.0, 3.0);
    Polylines boundary;
    screen.sampleBoundary(boundary);
    std::vector<Point3> outline;
    for (const auto& edge : boundary) outline.insert(outline.end(), edge.begin(), edge.end());

    // Twice the signed area that the viewer sees, x to the right and z up: positive for
    // anticlockwise.
    double area = 0.0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Point3& a = outline[i];
        const Point3& b = outline[(i + 1) % outline.size()];
        area += a[0] * b[2] - b[0] * a[2];
        const double way = length(b - a);
        EXPECT_NEAR(way, a[0] == b[0] ? 3.0 / 20 : 4.0 / 20, 1e-12);
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(outline[j], a);
    }
    // 80 sums of rounded products of numbers up to 6.
    EXPECT_NEAR(area, 2.0 * 4.0 * 3.0, 1e-12);
}

TEST(BoundarySampling, AppendsToWhatIsThere) {
    const FlatScreen screen(4.0, 3.0);
    Polylines boundary{{Point3(9, 9, 9)}};
    screen.sampleBoundary(boundary);
    screen.sampleBoundary(boundary);
    ASSERT_EQ(boundary.size(), 9U);
    EXPECT_TRUE(sameBits(boundary[0], std::vector{Point3(9, 9, 9)}));
    for (std::size_t i = 1; i <= 4; ++i) EXPECT_TRUE(sameBits(boundary[i], boundary[i + 4]));
}

TEST(BoundarySampling, RefusedSamplesAreSkippedAndEmptyEdgesStay) {
    ScriptedScreen screen;
    screen.onMapInto3D = [](const Point2& uv, Point3& point, bool) {
        point = Point3(uv[0], 0.0, uv[1]);
        return uv[0] < 0.5;
    };
    Polylines boundary;
    screen.sampleBoundary(boundary);
    ASSERT_EQ(boundary.size(), 4U);
    EXPECT_EQ(boundary[0].size(), 20U);
    EXPECT_EQ(boundary[1].size(), 10U);  // 0/20 to 9/20
    EXPECT_EQ(boundary[2].size(), 0U);
    EXPECT_EQ(boundary[3].size(), 9U);  // 9/20 down to 1/20
}

TEST(BoundarySampling, ScreenWithoutUVAppendsNothing) {
    ScriptedScreen screen;
    screen.parameterized = false;
    Polylines boundary{{Point3(9, 9, 9)}};
    screen.sampleBoundary(boundary);
    EXPECT_TRUE(sameBits(boundary, Polylines{{Point3(9, 9, 9)}}));
    EXPECT_TRUE(screen.calls.empty());
}
