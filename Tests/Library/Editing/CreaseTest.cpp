#include <gtest/gtest.h>

#include <cmath>

#include <QuarnScreen/Detail/Editing/Crease.h>

#include "Reference/Mesh/ReferenceViews.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

// Two sheets of 16 x 8 cells each, which meet along the Z axis at a right angle.
Mesh roof() {
    return gridOnSurface({32, 8}, [](double u, double v) {
        const double along = u * 8.0 - 4.0;
        return Point3(along, std::abs(along), v * 4.0 - 2.0);
    });
}

quarn::detail::Crease creaseOf(const Mesh& mesh) {
    std::vector<const Triangle*> pointers;
    for (const Triangle& triangle : mesh) pointers.push_back(&triangle);
    return quarn::detail::sharpestCrease(pointers);
}

::testing::AssertionResult hasPlainCrease(const Mesh& mesh) {
    std::vector<const Triangle*> pointers;
    for (const Triangle& triangle : mesh) pointers.push_back(&triangle);
    const quarn::detail::Crease crease = quarn::detail::sharpestCrease(pointers);
    const auto [first, second] = referenceCrease(pointers);
    return sameBits(std::vector<Point3>{crease.first, crease.second}, std::vector<Point3>{first, second});
}

}  // namespace

TEST(Crease, OfTrianglesWithoutSharedEdgeHasNoLength) {
    EXPECT_EQ(creaseOf({}).first, Point3());
    const Triangle triangle = wholeTriangle({1.0, 1.0, 1.0}, {2.0, 1.0, 1.0}, {1.0, 1.0, 2.0});
    EXPECT_EQ(creaseOf({triangle}).first, Point3());
    // Twice the same triangle: three corners are shared, so it is no edge.
    EXPECT_EQ(creaseOf({triangle, triangle}).second, Point3());
    const Triangle atOneCorner = wholeTriangle({1.0, 1.0, 1.0}, {0.0, 1.0, 1.0}, {1.0, 1.0, 0.0});
    EXPECT_EQ(creaseOf({triangle, atOneCorner}).second, Point3());
}

TEST(Crease, IsTheEdgeWithTheGreatestAngleBetweenNormals) {
    const Point3 a(1.0, 0.0, 0.0);
    const Point3 b(1.0, 0.0, 1.0);
    const Point3 c(2.0, 0.0, 0.5);
    const Triangle middle = wholeTriangle(a, b, c);
    const Triangle shallow = wholeTriangle(b, a, {0.0, 0.1, 0.5});
    const Triangle steep = wholeTriangle(c, b, {2.0, 5.0, 2.0});
    const quarn::detail::Crease crease = creaseOf({middle, shallow, steep});
    EXPECT_EQ(crease.first, b);
    EXPECT_EQ(crease.second, c);
}

TEST(Crease, OfEqualAnglesIsThatOfTheEarliestPairInItsFirstTrianglesOrder) {
    const Mesh mesh = flatGrid({2, 1});
    const quarn::detail::Crease crease = creaseOf(mesh);
    // Triangles 0 and 1 share corners 0 and 2 of the first.
    EXPECT_EQ(crease.first, mesh[0].vertices[0].position);
    EXPECT_EQ(crease.second, mesh[0].vertices[2].position);
}

TEST(Crease, CountsCornersNearerThanAMillionth) {
    const Triangle triangle = wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0});
    const auto isShared = [&](double gap) {
        const Triangle other = wholeTriangle({1.0, gap, 0.0}, {0.0, gap, 0.0}, {0.5, gap, -1.0});
        return creaseOf({triangle, other}).second != Point3();
    };
    EXPECT_TRUE(isShared(0.99e-6));
    EXPECT_FALSE(isShared(1e-6));
    EXPECT_FALSE(isShared(1.01e-6));
}

TEST(Crease, ACornerHeldTwiceCountsTwice) {
    const Point3 p(1.0, 0.0, 0.0);
    const Triangle twice = wholeTriangle(p, p, {3.0, 0.0, 0.0});
    const Triangle other = wholeTriangle({0.0, 0.0, 4.0}, p, {0.0, 0.0, 5.0});
    const quarn::detail::Crease crease = creaseOf({twice, other});
    EXPECT_EQ(crease.first, p);
    EXPECT_EQ(crease.second, p);
    EXPECT_EQ(quarn::detail::closestOn(crease, {0.0, 0.0, 0.0}), p);
}

TEST(Crease, ATriangleWithOneCornerThatIsNoNumberSharesAnEdgeWithItself) {
    const Point3 a(1.0, 0.0, 0.0);
    const Point3 b(2.0, 0.0, 0.0);
    const quarn::detail::Crease crease = creaseOf({wholeTriangle(a, {std::nan(""), 0.0, 0.0}, b)});
    EXPECT_EQ(crease.first, a);
    EXPECT_EQ(crease.second, b);
}

TEST(Crease, IsThatOfTheReference) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh;
        const int count = rng.integer(0, 10);
        for (int k = 0; k < count; ++k)
            mesh.push_back(
                wholeTriangle(rng.integerPoint(0, 1), rng.integerPoint(0, 1), rng.integerPoint(0, 1)));
        if (rng.coin()) makeStale(mesh, rng, 0.3);
        ASSERT_TRUE(hasPlainCrease(mesh));
    }
}

TEST(Crease, ClosestPositionIsClampedToItsEnds) {
    const quarn::detail::Crease crease = {{1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}};
    EXPECT_EQ(quarn::detail::closestOn(crease, {2.5, 7.0, 0.0}), Point3(2.5, 0.0, 0.0));
    EXPECT_EQ(quarn::detail::closestOn(crease, {0.5, 7.0, 0.0}), crease.first);
    EXPECT_EQ(quarn::detail::closestOn(crease, {3.5, 7.0, 0.0}), crease.second);
    EXPECT_EQ(quarn::detail::closestOn(crease, {std::nan(""), 0.0, 0.0}), crease.first);
}

TEST(MeshSnapping, PullsAPositionNearTheRidgeOntoIt) {
    const TriangleScreen screen(roof());
    const Point3 snapped = screen.getPointOnMeshEdge({0.03, 0.05, 0.6});
    EXPECT_NEAR(snapped[0], 0.0, 1e-12);
    EXPECT_NEAR(snapped[1], 0.0, 1e-12);
    EXPECT_NEAR(snapped[2], 0.6, 1e-12);
}

TEST(MeshSnapping, LeavesAPositionFarFromTheCrease) {
    const TriangleScreen screen(roof());
    for (const double distance : {0.51, 5.0}) {
        const Point3 point(0.0, -distance, 0.6);
        EXPECT_EQ(screen.getPointOnMeshEdge(point), point);
    }
    EXPECT_NE(screen.getPointOnMeshEdge({0.0, -0.49, 0.6}), Point3(0.0, -0.49, 0.6));
}

TEST(MeshSnapping, OfAFlatMeshTakesAnySharedEdge) {
    const TriangleScreen screen(flatGrid({20, 15}));
    const Point3 point(0.33, 0.2, 0.27);
    const Point3 snapped = screen.getPointOnMeshEdge(point);
    EXPECT_NE(snapped, point);
    EXPECT_EQ(snapped[1], 0.0);
}

TEST(MeshSnapping, NeedsAHundredTrianglesForEachLevel) {
    // Trees over 16 triangles and more have four levels, those over 32 and more have five.
    Mesh mesh = flatGrid({50, 5});
    ASSERT_EQ(mesh.size(), 500U);
    const Point3 point(0.33, 0.2, 0.27);
    EXPECT_NE(TriangleScreen(mesh).getPointOnMeshEdge(point), point);
    mesh.pop_back();
    EXPECT_EQ(TriangleScreen(mesh).getPointOnMeshEdge(point), point);
}

TEST(MeshSnapping, OfOneOrNoTriangleGoesToTheOrigin) {
    for (const Mesh& mesh :
         {Mesh(), Mesh{wholeTriangle({9.0, 0.0, 0.0}, {9.0, 1.0, 0.0}, {9.0, 0.0, 1.0})}}) {
        const TriangleScreen screen(mesh);
        EXPECT_EQ(screen.getPointOnMeshEdge({0.0, 0.49, 0.0}), Point3());
        EXPECT_EQ(screen.getPointOnMeshEdge({0.0, 0.5, 0.0}), Point3(0.0, 0.5, 0.0));
    }
}

TEST(MeshSnapping, RemembersTheGreatestDepthOfItsTree) {
    TriangleScreen screen(flatGrid({4, 4}));
    screen.reindex({wholeTriangle({9.0, 0.0, 0.0}, {9.0, 1.0, 0.0}, {9.0, 0.0, 1.0})});
    EXPECT_EQ(screen.getPointOnMeshEdge({0.0, 0.25, 0.0}), Point3(0.0, 0.25, 0.0));
}

TEST(MeshSnapping, IsThatOfTheReference) {
    int snapped = 0;
    for (int i = 0; i < 12; ++i) {
        Mesh mesh = i % 3 == 0 ? roof() : i % 3 == 1 ? wave({24, 12}) : flatGrid({32, 9});
        if (i >= 6) shuffle(mesh, i);
        TriangleScreen screen(mesh);
        if (i >= 9) {
            // The centroids stay behind, and the search goes by them.
            screen.applyTransform({0.2, 0.1, 0.0}, {10.0, 0.0, 0.0}, 1.0);
            mesh = screen.mesh();
        }
        const int depth = referenceUVTreeDepth(mesh);
        for (int k = 0; k < 60; ++k) {
            Rng rng(60 * i + k);
            SCOPED_TRACE(60 * i + k);
            const Point3 point = anyOf(mesh, rng).centroid + rng.point(-0.4, 0.4);
            const Point3 result = screen.getPointOnMeshEdge(point);
            ASSERT_TRUE(sameBits(result, referencePointOnEdge(mesh, depth, point)));
            snapped += result != point ? 1 : 0;
        }
    }
    EXPECT_GT(snapped, 300);
}
