// The algorithms that all shapes share, on meshes.
#include <gtest/gtest.h>

#include <limits>

#include <QuarnScreen/ScreenUtils.h>

#include "Support/LogCapture.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/Sheets.h"
#include "Support/Mesh/TriangleScreen.h"
#include "Support/SharedQueries.h"

using namespace quarn::test;

namespace {

const Point3 kAhead(0.0, 1.0, 0.0);
// Positions of hits are in single precision.
constexpr double kHitError = 1e-6;

}  // namespace

TEST(ClosestOnAMesh, EitherDirectionFindsTheHitWithItsTriangleAndUV) {
    TriangleScreen screen(flatGrid({4, 3}));
    const Point3 from(0.3, -2.0, 0.2);
    for (const double way : {1.0, -1.0, 0x1p-10, -0x1p10}) {
        SCOPED_TRACE(way);
        Intersection result;
        ASSERT_TRUE(closest(from, kAhead * way, screen, result));
        EXPECT_LT(length(result.point - Point3(0.3, 0.0, 0.2)), kHitError);
        EXPECT_GE(result.triangleIndex, 0);
        EXPECT_TRUE(result.hasUV);
        EXPECT_NEAR(result.uv[0], (0.3 + 2.0) / 4.0, kHitError);
        EXPECT_NEAR(result.uv[1], (1.5 - 0.2) / 3.0, kHitError);
        EXPECT_EQ(result.normalSign, -1) << "measured along the ray that found it, which runs ahead";
    }
}

TEST(ClosestOnAMesh, NearestOfBothDirectionsIsTaken) {
    TriangleScreen screen(sheetsAt({-1.0, 1.0, 4.0}));
    for (const auto& [start, nearest] : {std::pair(0.125, 1.0), std::pair(-0.125, -1.0), std::pair(2.0, 1.0),
                                         std::pair(3.0, 4.0), std::pair(9.0, 4.0)}) {
        for (const double way : {1.0, -1.0}) {
            Intersection result;
            ASSERT_TRUE(closest(onRay(start), kAhead * way, screen, result));
            EXPECT_NEAR(result.point[1], nearest, kHitError) << start << " " << way;
        }
    }
}

TEST(ClosestOnAMesh, ExtrapolationPassesHitsOfEitherSide) {
    TriangleScreen screen(sheetsAt({-1.0, 1.0}));
    for (const double start : {0.25, -0.25}) {
        Intersection plain;
        Intersection extrapolated;
        ASSERT_TRUE(closest(onRay(start), kAhead, screen, plain));
        ASSERT_TRUE(closest(onRay(start), kAhead, screen, extrapolated, true));
        EXPECT_TRUE(sameBits(extrapolated, plain));
        EXPECT_GE(plain.triangleIndex, 0);
    }
}

// Intended: the ray that hits nothing gives its position nearest to the boundary. That is its start
// where it runs away from the mesh or across it, and no hit lies nearer.
TEST(ClosestOnAMesh, ExtrapolationPrefersTheStartWhereARayHitsNothing) {
    TriangleScreen screen(sheetsAt({0.0}));
    for (const Point3& from : {onRay(-1.0), onRay(2.0), Point3(5.0, -1.0, 0.1)}) {
        Intersection result;
        ASSERT_TRUE(closest(from, kAhead, screen, result, true));
        EXPECT_TRUE(sameBits(result.point, from));
        EXPECT_EQ(result.triangleIndex, -1);
        EXPECT_EQ(result.normalSign, 0);
        EXPECT_TRUE(result.hasUV);
        EXPECT_TRUE(sameBits(result.uv, screen.mapInto2D(from, true)));
    }
}

TEST(ClosestOnAMesh, BesideTheMeshThereIsNone) {
    TriangleScreen screen(sheetsAt({0.0}));
    Intersection result;
    EXPECT_FALSE(closest(Point3(5.0, -1.0, 0.1), kAhead, screen, result));
    EXPECT_TRUE(sameBits(result, Intersection()));
}

// No position of the mesh lies under this one, so the zero position counts as the closest: 9.05
// away, times the root of three, is farther than 9.9 but not than 16.
TEST(ClosestOnAMesh, WithoutAFootTheHitIsMeasuredByTheZeroPosition) {
    Mesh mesh = sheetsAt({0.0});
    const auto isFound = [&](double distance) {
        for (Triangle& triangle : mesh) {
            for (TriangleVertex& vertex : triangle.vertices)
                vertex.position[1] = distance + vertex.position[0];
            computeFields(triangle);
        }
        TriangleScreen screen(mesh);
        const Point3 from(1.0, -9.0, 0.1);
        EXPECT_TRUE(sameBits(screen.getClosestPoint(from), Point3())) << distance;
        Intersection result;
        return closest(from, kAhead, screen, result);
    };
    EXPECT_TRUE(isFound(-0.1));
    EXPECT_FALSE(isFound(6.0));
}

TEST(ClosestOnAMesh, EmptyMeshHasNoneAndRaisesNothing) {
    TriangleScreen screen;
    for (const bool extrapolate : {false, true}) {
        Intersection result;
        EXPECT_FALSE(closest(Point3(1.0, 2.0, 3.0), kAhead, screen, result, extrapolate));
        EXPECT_TRUE(sameBits(result, Intersection()));
    }
}

TEST(ShortestDistanceToAMesh, IsThatToTheFootOrElseToTheZeroPosition) {
    const TriangleScreen screen(flatGrid({4, 3}));
    EXPECT_NEAR(screen.getShortestDistance({0.3, -2.0, 0.2}), 2.0, 1e-12);
    EXPECT_NEAR(screen.getShortestDistance({0.3, 0.0, 0.2}), 0.0, 1e-12);
    EXPECT_EQ(screen.getShortestDistance({6.0, 0.0, 8.0}), 10.0);
}

TEST(CenterOfAMesh, IsTheMiddleOfItsBox) {
    Mesh mesh = sheetsAt({2.0, 7.0});
    for (Triangle& triangle : mesh)
        for (TriangleVertex& vertex : triangle.vertices)
            vertex.position = vertex.position + Point3(8, 0, -16);
    EXPECT_TRUE(sameBits(centreOf(TriangleScreen(mesh)), Point3(8.0, 4.5, -16.0)));
    TriangleScreen empty;
    EXPECT_TRUE(sameBits(centreOf(empty), Point3()));
    // The box of nothing is turned over from one end of the numbers to the other, and too wide for
    // a number.
    empty.load(Mesh());
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(sameBits(centreOf(empty), Point3(kInfinity, kInfinity, kInfinity)));
}

TEST(ChannelOnAMesh, RaysThatMissGetTheirPositionNearestToTheRim) {
    const TriangleScreen screen(sheetsAt({0.0}));
    const auto ray = [](double x) { return std::pair(Point3(x, -4.0, 0.1), Point3(x, 4.0, 0.1)); };
    const std::vector<Point3> points = screen.intersectChannelBoundary({ray(5.0), ray(0.3)}, {});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_NEAR(length(points[0] - Point3(5.0, 0.0, 0.1)), 0.0, 1e-9);
    EXPECT_LT(length(points[1] - Point3(0.3, 0.0, 0.1)), kHitError);
    EXPECT_TRUE(screen.intersectChannelBoundary({ray(5.0)}, {ray(-5.0)}).empty());
    EXPECT_TRUE(sameBits(screen.intersectChannelBoundary({ray(5.0)}, {ray(0.3)}), {points[0]}));
}

// A tube of two sheets that face one another: the first hit shows the side, and the other sheet is
// passed over.
TEST(ChannelOnAMesh, SideOfTheFirstHitPicksTheSheet) {
    Mesh tube = sheetsAt({-1.0, 1.0});
    for (std::size_t i = 0; i < 2; ++i) {
        std::swap(tube[i].vertices[1], tube[i].vertices[2]);
        computeFields(tube[i]);
    }
    const TriangleScreen screen(tube);
    const std::pair<Point3, Point3> across(onRay(-4.0), onRay(4.0));
    EXPECT_NEAR(screen.intersectChannelBoundary({across}, {}).at(0)[1], -1.0, kHitError);
    const std::pair<Point3, Point3> fromWithin(onRay(0.0), onRay(4.0));
    const std::vector<Point3> points = screen.intersectChannelBoundary({fromWithin, across}, {});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_NEAR(points[0][1], 1.0, kHitError);
    EXPECT_NEAR(points[1][1], 1.0, kHitError);
}

TEST(AspectRatioOfAMesh, IsThatOfItsSheetAndOneWithoutParameterisation) {
    TriangleScreen flat(flatGrid({7, 5}, {4.0, 3.0}));
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(flat), 4.0 / 3.0, 1e-11);
    // Each chord of a cell's step lies on a facet, whose chord is shorter than its arc by its angle
    // squared over 24.
    TriangleScreen curved(cylinderSection({50, 5}, 1.0, 2.0, 1.0));
    EXPECT_NEAR(ScreenUtils::estimateAspectRatioUV(curved), 0.5, 0.5 * 0.02 * 0.02 / 24.0 * 1.01);

    flat.parameterized = false;
    const LogCapture log(L"Quarn.QuarnControl.ScreenUtils");
    EXPECT_EQ(ScreenUtils::estimateAspectRatioUV(flat), 1.0);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].level, "WARN");
}
