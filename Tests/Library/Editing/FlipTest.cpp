#include <gtest/gtest.h>

#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/OverriddenScreen.h"
#include "Support/Mesh/TriangleBits.h"

using namespace quarn::test;

TEST(MeshFlip, TurnsTheUVOfEachCornerAndNothingElse) {
    for (int i = 0; i < seedCount(60); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = anyMesh(rng);
        const bool flipU = rng.coin();
        const bool flipV = !flipU || rng.coin();
        Mesh expected = mesh;
        for (Triangle& triangle : expected) {
            for (TriangleVertex& corner : triangle.vertices) {
                const Point2 uv = corner.uv;
                corner.uv = {flipU ? 1.0 - uv[0] : uv[0], flipV ? 1.0 - uv[1] : uv[1]};
            }
        }
        TriangleScreen screen(mesh);
        screen.applyParameterizationTransform(flipU, flipV);
        ASSERT_TRUE(sameTriangles(screen.mesh(), expected));
    }
}

TEST(MeshFlip, RebuildsTheOutlineFromTheTurnedUV) {
    TriangleScreen screen(flatGrid({2, 2}));
    const std::vector<Point2> before = screen.outline().uvPoints;
    screen.applyParameterizationTransform(true, false);
    EXPECT_TRUE(screen.hasValidBoundary());
    ASSERT_EQ(screen.outline().uvPoints.size(), before.size());
    EXPECT_EQ(before.front(), Point2(0.0, 1.0));
    EXPECT_EQ(screen.outline().uvPoints.front(), Point2(1.0, 1.0));
}

TEST(MeshFlip, LeavesTheOldUVEdgesAndSoTurnsEachTriangleAboutItsFirstCorner) {
    TriangleScreen screen({wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0})});
    screen.applyParameterizationTransform(true, false);
    const Triangle& triangle = screen.mesh()[0];
    EXPECT_EQ(triangle.vertices[0].uv, Point2(1.0, 0.0));
    EXPECT_EQ(triangle.uvEdge1, Point2(1.0, 0.0));
    EXPECT_EQ(triangle.uvDeterminant, 1.0);
    EXPECT_EQ(triangle.uvAt(1.0, 0.0), Point2(2.0, 0.0));
    // The corner itself is the only UV that the bounds and the stored edges agree on.
    Point3 mapped;
    EXPECT_TRUE(screen.mapInto3D({1.0, 0.0}, mapped, false));
    EXPECT_EQ(mapped, Point3());
    EXPECT_FALSE(screen.mapInto3D({0.75, 0.1}, mapped, false));
}

TEST(MeshFlip, OfNeitherAxisDoesNotRebuild) {
    TriangleScreen screen(flatGrid({2, 2}));
    screen.mesh()[0].vertices[0].position = {0.0, 0.0, 100.0};
    screen.applyParameterizationTransform(false, false);
    Point3 min;
    Point3 max;
    screen.getBounds(&min, &max);
    EXPECT_EQ(max[2], 1.5);
    screen.applyParameterizationTransform(false, true);
    screen.getBounds(&min, &max);
    EXPECT_EQ(max[2], 100.0);
}

TEST(MeshFlip, OfAScreenWithoutParameterisationDoesNothing) {
    const Mesh mesh = flatGrid({2, 2});
    TriangleScreen screen(mesh);
    screen.parameterized = false;
    screen.applyParameterizationTransform(true, false);
    EXPECT_TRUE(sameTriangles(screen.mesh(), mesh));
    EXPECT_EQ(screen.outline().uvPoints.front(), Point2(0.0, 1.0));
}

TEST(MeshFlip, TwiceGivesTheUVOfBefore) {
    const Mesh mesh = flatGrid({4, 4});
    TriangleScreen screen(mesh);
    screen.applyParameterizationTransform(true, true);
    screen.applyParameterizationTransform(true, true);
    EXPECT_TRUE(sameTriangles(screen.mesh(), mesh));
}
