#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <type_traits>

#include <Common/ZelmoreException.h>

#include "Reference/Mesh/ReferenceMesh.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();
const Point3 kAhead(0.0, 1.0, 0.0);

}  // namespace

static_assert(!std::is_copy_constructible_v<TriangleScreen>);
static_assert(!std::is_copy_assignable_v<TriangleScreen>);
static_assert(!std::is_move_constructible_v<TriangleScreen>);
static_assert(!std::is_move_assignable_v<TriangleScreen>);

TEST(MeshScreen, NewScreenIsEmptyAndAllZero) {
    const TriangleScreen screen;
    EXPECT_FALSE(screen.hasTesselation());
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_TRUE(sameBits(screen.getCentroid(), Point3()));
    Point3 min(1.0, 1.0, 1.0);
    Point3 max(1.0, 1.0, 1.0);
    screen.getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3()));
    EXPECT_TRUE(sameBits(max, Point3()));
    EXPECT_TRUE(screen.intersect({}, kAhead).empty());
    EXPECT_TRUE(sameBits(screen.getScreenNormal({}), Point3()));
    EXPECT_FALSE(screen.isOnScreenSection({}));
    EXPECT_THROW((void)screen.getClosestPoint({}), ZelmoreException);
}

TEST(MeshScreen, BuiltWithoutTrianglesItIsEmptyWithInvertedBounds) {
    TriangleScreen screen;
    screen.addScreenToScene();
    EXPECT_FALSE(screen.hasTesselation());
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_TRUE(sameBits(screen.getCentroid(), Point3()));
    Point3 min;
    Point3 max;
    screen.getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(kGreatest, kGreatest, kGreatest)));
    EXPECT_TRUE(sameBits(max, Point3(-kGreatest, -kGreatest, -kGreatest)));
    EXPECT_TRUE(screen.intersect({}, kAhead).empty());
    EXPECT_TRUE(sameBits(screen.getScreenNormal({}), Point3()));
    EXPECT_FALSE(screen.isOnScreenSection({}));
}

TEST(MeshScreen, ClosestPointOfAnEmptyMeshNamesTheEmptyTree) {
    TriangleScreen screen;
    for (int built = 0; built < 2; ++built) {
        try {
            (void)screen.getClosestPoint({});
            ADD_FAILURE() << "nothing was thrown";
        } catch (const ZelmoreException& error) {
            EXPECT_EQ(error.message(), L"There are no values in the KDTree");
        }
        screen.addScreenToScene();
    }
}

TEST(MeshScreen, LoadedScreenAnswersEveryQuestion) {
    const TriangleScreen screen(flatGrid({4, 4}));
    const Point3 point(0.1, 0.0, 0.1);
    EXPECT_TRUE(screen.hasTesselation());
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_EQ(screen.intersect({0.1, -1.0, 0.1}, point).count(), 1);
    EXPECT_TRUE(sameBits(screen.getScreenNormal(point), Point3(0.0, -1.0, 0.0)));
    EXPECT_TRUE(screen.isOnScreenSection(point));
    EXPECT_LT(length(screen.getClosestPoint(point) - point), 1e-15);
}

TEST(MeshScreen, WhatHoldsForEveryMesh) {
    const TriangleScreen screen(dome({4, 4}));
    EXPECT_TRUE(screen.isValid());
    EXPECT_FALSE(screen.isPlanar());
    EXPECT_TRUE(sameBits(screen.getEyepoint(), Point3()));
    const auto digest = screen.getUniqueDataHash();
    EXPECT_EQ(digest.size(), 20U);
    EXPECT_TRUE(std::all_of(digest.begin(), digest.end(), [](unsigned char byte) { return byte == 0; }));
}

TEST(MeshScreen, BoundsAreThoseOfAllCorners) {
    const TriangleScreen screen(flatGrid({3, 3}, {4.0, 2.0}));
    Point3 min;
    Point3 max;
    screen.getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(-2.0, 0.0, -1.0)));
    EXPECT_TRUE(sameBits(max, Point3(2.0, 0.0, 1.0)));
}

TEST(MeshScreen, BoundsAreNotWrittenWhereAPointerIsNull) {
    const TriangleScreen screen(flatGrid({3, 3}));
    Point3 corner(7.0, 8.0, 9.0);
    screen.getBounds(nullptr, &corner);
    screen.getBounds(&corner, nullptr);
    screen.getBounds(nullptr, nullptr);
    EXPECT_TRUE(sameBits(corner, Point3(7.0, 8.0, 9.0)));
}

TEST(MeshScreen, CentroidIsWeightedByArea) {
    // A square meter around (0, 0, 0), and three around (10, 0, 0).
    Mesh mesh = flatGrid({1, 1}, {1.0, 1.0});
    for (Triangle triangle : flatGrid({1, 1}, {1.0, 3.0})) {
        for (TriangleVertex& vertex : triangle.vertices) vertex.position[0] += 10.0;
        computeFields(triangle);
        mesh.push_back(triangle);
    }
    const TriangleScreen screen(mesh);
    EXPECT_NEAR(screen.getCentroid()[0], 7.5, 1e-12);
    EXPECT_NEAR(screen.getCentroid()[1], 0.0, 1e-12);
    EXPECT_NEAR(screen.getCentroid()[2], 0.0, 1e-12);
}

TEST(MeshScreen, CentroidOfAMeshWithoutAreaIsZeroAndItsBoundsAreRight) {
    const TriangleScreen screen({wholeTriangle({1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}),
                                 wholeTriangle({2.0, 5.0, 3.0}, {2.0, 5.0, 3.0}, {2.0, 5.0, 3.0})});
    EXPECT_TRUE(sameBits(screen.getCentroid(), Point3()));
    Point3 min;
    Point3 max;
    screen.getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(1.0, 1.0, 1.0)));
    EXPECT_TRUE(sameBits(max, Point3(2.0, 5.0, 3.0)));
}

TEST(MeshScreen, BoundsAndCentroidAreThoseOfTheReference) {
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleScreen screen(anyMesh(rng));
        const ReferenceBounds expected(screen.mesh());
        Point3 min;
        Point3 max;
        screen.getBounds(&min, &max);
        ASSERT_TRUE(sameBits(min, expected.min));
        ASSERT_TRUE(sameBits(max, expected.max));
        ASSERT_TRUE(sameBits(screen.getCentroid(), expected.centroid));
    }
}

TEST(MeshScreen, TesselationIsACopyOfTheTriangles) {
    TriangleScreen screen(wave({3, 2}));
    Mesh copy = flatGrid({9, 9});
    screen.getTesselation(copy);
    ASSERT_EQ(copy.size(), 12U);
    for (std::size_t i = 0; i < copy.size(); ++i)
        EXPECT_TRUE(sameBits(copy[i].centroid, screen.mesh()[i].centroid)) << i;

    const Triangle* const before = screen.mesh().data();
    screen.getTesselation(screen.mesh());
    EXPECT_EQ(screen.mesh().data(), before);
    EXPECT_EQ(screen.mesh().size(), 12U);
}

TEST(MeshScreen, SampledBoundaryUVIsACopyOfTheOutline) {
    TriangleScreen screen(flatGrid({2, 2}));
    std::vector<Point2> outline(99);
    screen.sampleBoundaryUV(outline);
    ASSERT_EQ(outline.size(), 9U);
    EXPECT_TRUE(sameBits(outline, screen.outline().uvPoints));

    screen.sampleBoundaryUV(screen.outline().uvPoints);
    EXPECT_TRUE(sameBits(screen.outline().uvPoints, outline));
}

TEST(MeshScreen, OutlineIsValidOnlyWhereItIsOneWithUVs) {
    EXPECT_TRUE(TriangleScreen(dome({4, 4})).hasValidBoundary());
    EXPECT_FALSE(TriangleScreen(gridWithHoles({5, 5}, 1)).hasValidBoundary());
    EXPECT_FALSE(TriangleScreen(separatePieces(2, {2, 2})).hasValidBoundary());
    Mesh bare = flatGrid({2, 2});
    stripUV(bare);
    const TriangleScreen screen(bare);
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_EQ(screen.outline().points.size(), 9U);
}

TEST(MeshScreen, SecondLoadForgetsTheFirst) {
    TriangleScreen screen(dome({6, 6}));
    screen.load(flatGrid({1, 1}, {1.0, 1.0}));
    EXPECT_EQ(screen.outline().points.size(), 5U);
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_TRUE(sameBits(screen.getScreenNormal({0.1, 0.0, 0.0}), Point3(0.0, -1.0, 0.0)));
    screen.load(Mesh());
    EXPECT_TRUE(screen.outline().points.empty());
    EXPECT_TRUE(screen.outline().uvPoints.empty());
    EXPECT_TRUE(screen.outline().triangles.empty());
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_TRUE(sameBits(screen.getScreenNormal({0.1, 0.0, 0.0}), Point3()));
}

TEST(MeshScreen, ParameterizationIsThereWhereUVsDifferAtAll) {
    Mesh mesh = flatGrid({2, 3});
    EXPECT_TRUE(MeshScreen::checkParameterization(mesh));
    for (Triangle& triangle : mesh)
        for (TriangleVertex& vertex : triangle.vertices) vertex.uv = {0.25, 0.5};
    EXPECT_FALSE(MeshScreen::checkParameterization(mesh));
    mesh.back().vertices[2].uv = {0.25, 0.75};
    EXPECT_TRUE(MeshScreen::checkParameterization(mesh));
}

TEST(MeshScreen, OutlineHoldsItsEdge) {
    const std::vector<Point2> triangle = {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}};
    EXPECT_TRUE(TriangleScreen::pointWithinBoundary(triangle, {0.25, 0.25}));
    EXPECT_TRUE(TriangleScreen::pointWithinBoundary(triangle, {0.5, 0.5}));
    EXPECT_FALSE(TriangleScreen::pointWithinBoundary(triangle, {0.75, 0.75}));
}
