#include <gtest/gtest.h>

#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleBits.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

// What 90 times the eight digits of a degree lacks of a right angle; its sine, too, to the last
// digits that matter.
constexpr double kLackOfRightAngle = 1.5707963267948966 - 90.0 * 0.017453292;

// Where a turn takes a position.
Point3 turned(const Point3& position, const Point3& rotation) {
    TriangleScreen screen({wholeTriangle(position, {9.0, 0.0, 0.0}, {0.0, 9.0, 9.0})});
    screen.applyTransform({}, rotation, 1.0);
    return screen.mesh()[0].vertices[0].position;
}

::testing::AssertionResult isNear(const Point3& a, const Point3& b) {
    const double distance = length(a - b);
    return distance < 1e-6 ? ::testing::AssertionSuccess()
                           : ::testing::AssertionFailure() << a[0] << ' ' << a[1] << ' ' << a[2];
}

}  // namespace

TEST(MeshTransform, WithoutTurnAndScaleMovesCornersAndLeavesCentroids) {
    Mesh mesh = wave({3, 3});
    for (Triangle& triangle : mesh) triangle.vertices[0].normal = {7.0, 7.0, 7.0};
    TriangleScreen screen(mesh);
    const Point3 move(1.0, -20.0, 0.5);
    screen.applyTransform(move, {}, 1.0);
    ASSERT_EQ(screen.mesh().size(), mesh.size());
    for (std::size_t i = 0; i < mesh.size(); ++i) {
        const Triangle& after = screen.mesh()[i];
        Triangle expected = mesh[i];
        for (TriangleVertex& corner : expected.vertices) corner.position = corner.position + move;
        expected.computeGeometry();
        for (TriangleVertex& corner : expected.vertices) corner.normal = expected.normal;
        EXPECT_TRUE(sameBits(after, expected));
        EXPECT_EQ(after.centroid, mesh[i].centroid);
    }
}

TEST(MeshTransform, ScalesBeforeItMoves) {
    TriangleScreen screen({wholeTriangle({1.0, 2.0, 3.0}, {0.0, 0.0, 0.0}, {0.0, 4.0, 0.0})});
    screen.applyTransform({10.0, 20.0, 30.0}, {}, 2.0);
    EXPECT_EQ(screen.mesh()[0].vertices[0].position, Point3(12.0, 24.0, 36.0));
}

TEST(MeshTransform, TurnsAboutZTheNegativeWayAndAboutXAndYThePositiveWay) {
    EXPECT_TRUE(isNear(turned({1.0, 0.0, 0.0}, {90.0, 0.0, 0.0}), {0.0, -1.0, 0.0}));
    EXPECT_TRUE(isNear(turned({0.0, 1.0, 0.0}, {90.0, 0.0, 0.0}), {1.0, 0.0, 0.0}));
    EXPECT_TRUE(isNear(turned({0.0, 0.0, 1.0}, {90.0, 0.0, 0.0}), {0.0, 0.0, 1.0}));
    EXPECT_TRUE(isNear(turned({0.0, 1.0, 0.0}, {0.0, 90.0, 0.0}), {0.0, 0.0, 1.0}));
    EXPECT_TRUE(isNear(turned({0.0, 0.0, 1.0}, {0.0, 90.0, 0.0}), {0.0, -1.0, 0.0}));
    EXPECT_TRUE(isNear(turned({0.0, 0.0, 1.0}, {0.0, 0.0, 90.0}), {1.0, 0.0, 0.0}));
    EXPECT_TRUE(isNear(turned({1.0, 0.0, 0.0}, {0.0, 0.0, 90.0}), {0.0, 0.0, -1.0}));
}

TEST(MeshTransform, TurnsAboutYFirstThenXThenZ) {
    const Point3 all(90.0, 90.0, 90.0);
    EXPECT_TRUE(isNear(turned({1.0, 0.0, 0.0}, all), {1.0, 0.0, 0.0}));
    EXPECT_TRUE(isNear(turned({0.0, 1.0, 0.0}, all), {0.0, 0.0, 1.0}));
    EXPECT_TRUE(isNear(turned({0.0, 0.0, 1.0}, all), {0.0, -1.0, 0.0}));
}

TEST(MeshTransform, TakesADegreeByEightDigits) {
    EXPECT_NEAR(turned({1.0, 0.0, 0.0}, {90.0, 0.0, 0.0})[0], kLackOfRightAngle, 1e-14);
    EXPECT_NEAR(turned({0.0, 1.0, 0.0}, {0.0, 90.0, 0.0})[1], kLackOfRightAngle, 1e-14);
    EXPECT_NEAR(turned({0.0, 0.0, 1.0}, {0.0, 0.0, 90.0})[2], kLackOfRightAngle, 1e-14);
    EXPECT_GT(kLackOfRightAngle, 4e-8);
}

TEST(MeshTransform, MapsToTheMovedMeshWhileRaysMeetTheOldOne) {
    TriangleScreen screen(flatGrid({4, 4}));
    Point3 mapped;
    ASSERT_TRUE(screen.mapInto3D({0.3, 0.4}, mapped, false));
    const Point3 before = mapped;
    screen.applyTransform({0.0, 5.0, 0.0}, {}, 1.0);

    ASSERT_TRUE(screen.mapInto3D({0.25, 0.5}, mapped, false));
    EXPECT_EQ(mapped, Point3(-1.0, 5.0, 0.0));
    const IntersectionSet hits = screen.intersect({-1.0, -1.0, 0.1}, {-1.0, 0.0, 0.1});
    ASSERT_EQ(hits.count(), 1);
    EXPECT_NEAR(hits.first().point[1], 0.0, 1e-6);
    // A UV that was mapped before the move has the cached result.
    ASSERT_TRUE(screen.mapInto3D({0.3, 0.4}, mapped, false));
    EXPECT_EQ(mapped, before);
}

TEST(MeshTransform, FindsPositionsByTheOldCentroids) {
    // Two triangles far apart; after the move each lies where the other was.
    const Triangle left = wholeTriangle({-11.0, 0.0, 0.0}, {-9.0, 0.0, 0.0}, {-10.0, 0.0, 3.0});
    const Triangle right = wholeTriangle({9.0, 0.0, 0.0}, {11.0, 0.0, 0.0}, {10.0, 3.0, 0.0});
    TriangleScreen screen({left, right});
    screen.applyTransform({}, {}, -1.0);
    // The left centroid is nearest, but its triangle lies on the right now: the projection is
    // outside, and so the result zero.
    EXPECT_EQ(screen.getClosestPoint({-10.0, 0.5, 0.0}), Point3());
    EXPECT_EQ(screen.mesh()[0].centroid, left.centroid);
}

TEST(MeshTransform, RebuildsOutlineAndBounds) {
    TriangleScreen screen(flatGrid({2, 2}));
    screen.applyTransform({10.0, 0.0, 0.0}, {}, 2.0);
    Point3 min;
    Point3 max;
    screen.getBounds(&min, &max);
    EXPECT_EQ(min, Point3(6.0, 0.0, -3.0));
    EXPECT_EQ(max, Point3(14.0, 0.0, 3.0));
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_EQ(screen.outline().points.front(), Point3(6.0, 0.0, -3.0));
    // The centroid is the mean of the stored centroids, which did not move.
    EXPECT_NEAR(length(screen.getCentroid()), 0.0, 1e-12);
}

TEST(MeshTransform, OfAnEmptyMeshDoesNothing) {
    TriangleScreen screen;
    screen.applyTransform({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, 7.0);
    EXPECT_FALSE(screen.hasTesselation());
}
