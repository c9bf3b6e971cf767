#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/Conversions.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleBits.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

Point3 at(double x, double z) {
    return {x, 0.0, z};
}

// The corners of each triangle of a mesh.
std::vector<std::array<Point3, 3>> cornersOf(const Mesh& mesh) {
    std::vector<std::array<Point3, 3>> corners;
    for (const Triangle& triangle : mesh)
        corners.push_back(
            {triangle.vertices[0].position, triangle.vertices[1].position, triangle.vertices[2].position});
    return corners;
}

std::vector<std::array<Point3, 3>> piecesOf(const Point3& a, const Point3& b, const Point3& c, double bound) {
    TriangleScreen screen({wholeTriangle(a, b, c)});
    screen.refine(bound);
    return cornersOf(screen.mesh());
}

using Pieces = std::vector<std::array<Point3, 3>>;

}  // namespace

TEST(MeshRefine, ABoundAboveTheLongestEdgeCopiesAllTrianglesUnchanged) {
    const Mesh mesh = wave({4, 4});
    TriangleScreen screen(mesh);
    for (const double bound : {2.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
        screen.refine(bound);
        EXPECT_TRUE(sameTriangles(screen.mesh(), mesh));
        EXPECT_TRUE(screen.hasValidBoundary());
    }
}

TEST(MeshRefine, AnEdgeAsLongAsTheBoundIsNotCut) {
    EXPECT_EQ(piecesOf(at(0.0, 0.0), at(4.0, 0.0), at(0.0, 3.0), 5.0).size(), 1U);
    EXPECT_EQ(piecesOf(at(0.0, 0.0), at(4.0, 0.0), at(0.0, 3.0), std::nextafter(5.0, 0.0)).size(), 2U);
}

TEST(MeshRefine, OneLongEdgeGivesTwoPiecesInWindingOrder) {
    // 3-4-5 with the longest edge in each place.
    const Point3 p = at(0.0, 0.0);
    const Point3 q = at(4.0, 0.0);
    const Point3 r = at(0.0, 3.0);
    const Point3 m = at(2.0, 1.5);
    EXPECT_EQ(piecesOf(q, r, p, 4.5), (Pieces{{q, m, p}, {m, r, p}}));
    EXPECT_EQ(piecesOf(p, q, r, 4.5), (Pieces{{q, m, p}, {m, r, p}}));
    EXPECT_EQ(piecesOf(r, p, q, 4.5), (Pieces{{q, m, p}, {m, r, p}}));
}

TEST(MeshRefine, AThinTipOfTwoLongEdgesTakesTheDiagonalFromTheFirstCornerOnATie) {
    const Point3 a = at(-1.0, 0.0);
    const Point3 b = at(0.0, 4.0);
    const Point3 c = at(1.0, 0.0);
    const Point3 m = at(-0.5, 2.0);
    const Point3 n = at(0.5, 2.0);
    const double bound = 3.0;  // above the diagonal's length of 2.5
    const Pieces expected = {{a, n, c}, {a, m, n}, {m, b, n}};
    EXPECT_EQ(piecesOf(a, b, c, bound), expected);
    EXPECT_EQ(piecesOf(c, a, b, bound), expected);
    EXPECT_EQ(piecesOf(b, c, a, bound), expected);
}

TEST(MeshRefine, TwoLongEdgesAreCutAlongTheDiagonalThatHalvesItsCornerTheMoreEvenly) {
    // The diagonal from (0, 0) parts its corner into 71.6 and 18.4 degrees, that from (2, 0) its
    // own into 56.3 and 15.3.
    const Point3 o = at(0.0, 0.0);
    const Point3 e = at(2.0, 0.0);
    const Point3 tip = at(0.0, 6.0);
    const Point3 left = at(0.0, 3.0);
    const Point3 right = at(1.0, 3.0);
    const double bound = 3.7;  // above both diagonals
    // From the third corner, then from the first one.
    EXPECT_EQ(piecesOf(o, tip, e, bound), (Pieces{{o, left, e}, {left, right, e}, {left, tip, right}}));
    EXPECT_EQ(piecesOf(e, tip, o, bound), (Pieces{{e, left, o}, {e, right, left}, {right, tip, left}}));
}

TEST(MeshRefine, ThreeLongEdgesGiveFourPieces) {
    const Point3 v0 = at(0.0, 0.0);
    const Point3 v1 = at(4.0, 0.0);
    const Point3 v2 = at(0.0, 3.0);
    const Point3 m01 = at(2.0, 0.0);
    const Point3 m12 = at(2.0, 1.5);
    const Point3 m20 = at(0.0, 1.5);
    EXPECT_EQ(piecesOf(v0, v1, v2, 2.9),
              (Pieces{{v0, m01, m20}, {m01, m12, m20}, {m01, v1, m12}, {m20, m12, v2}}));
}

TEST(MeshRefine, PiecesReplaceTheirTriangleInPlace) {
    const Triangle small = wholeTriangle(at(0.0, 0.0), at(1.0, 0.0), at(0.0, 1.0));
    const Triangle large = wholeTriangle(at(0.0, 0.0), at(4.0, 0.0), at(0.0, 3.0));
    TriangleScreen screen({small, large, small});
    screen.refine(4.5);
    ASSERT_EQ(screen.mesh().size(), 4U);
    EXPECT_TRUE(sameBits(screen.mesh()[0], small));
    EXPECT_TRUE(sameBits(screen.mesh()[3], small));
}

TEST(MeshRefine, PiecesHaveCornersAndCentroidsAlone) {
    TriangleScreen screen({wholeTriangle(at(0.0, 0.0), at(4.0, 0.0), at(0.0, 3.0))});
    screen.refine(4.5);
    ASSERT_EQ(screen.mesh().size(), 2U);
    for (const Triangle& piece : screen.mesh()) {
        Triangle expected;
        expected.vertices = piece.vertices;
        expected.computeCentroids();
        EXPECT_TRUE(sameBits(piece, expected));
        EXPECT_EQ(piece.normal, Point3());
        EXPECT_EQ(piece.edge1, Point3());
        EXPECT_NE(piece.centroid, Point3());
        EXPECT_NE(piece.vertices[1].uv, kNoUV);
    }
}

TEST(MeshRefine, ACutTriangleHoldsNoPositionAndNoUVAnyMore) {
    TriangleScreen screen({wholeTriangle(at(0.0, 0.0), at(4.0, 0.0), at(0.0, 3.0))});
    const Point3 middle = at(1.0, 1.0);
    EXPECT_TRUE(screen.isOnScreenSection(middle));
    screen.refine(4.5);
    EXPECT_EQ(screen.getScreenNormal(middle), Point3());
    Point3 mapped;
    EXPECT_FALSE(screen.mapInto3D({0.25, 0.25}, mapped, false));
    // The ray tracer has the mesh of before, and indices of it.
    const IntersectionSet hits = screen.intersect({1.0, -1.0, 1.0}, {1.0, 0.0, 1.0});
    ASSERT_EQ(hits.count(), 1);
    EXPECT_EQ(hits.first().triangleIndex, 0);
    EXPECT_EQ(hits.first().normalSign, 0);
}

TEST(MeshRefine, RebuildsOutlineBoundsAndTrees) {
    TriangleScreen screen(flatGrid({2, 2}));
    const std::size_t outlineBefore = screen.outline().points.size();
    screen.refine(1.2);
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_GT(screen.outline().points.size(), outlineBefore);
    Point3 min;
    Point3 max;
    screen.getBounds(&min, &max);
    EXPECT_EQ(min, Point3(-2.0, 0.0, -1.5));
    EXPECT_EQ(max, Point3(2.0, 0.0, 1.5));
    EXPECT_NEAR(length(screen.getCentroid()), 0.0, 1e-12);
}

TEST(MeshRefine, AMidpointBetweenOppositeNormalsHasNaNAsItsNormal) {
    Triangle triangle = wholeTriangle(at(0.0, 0.0), at(4.0, 0.0), at(0.0, 3.0));
    triangle.vertices[1].normal = {0.0, 1.0, 0.0};
    triangle.vertices[2].normal = {0.0, -1.0, 0.0};
    TriangleScreen screen({triangle});
    screen.refine(4.5);
    ASSERT_EQ(screen.mesh().size(), 2U);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(screen.mesh()[0].vertices[1].normal[i]));
}

TEST(MeshRefine, ATriangleWithoutExtentIsKeptAndOneWithNaNEdgesIsNotCut) {
    const Point3 p = at(7.0, 7.0);
    EXPECT_EQ(piecesOf(p, p, p, 1e-300).size(), 1U);
    TriangleScreen screen;
    screen.refine(1.0);
    EXPECT_TRUE(screen.mesh().empty());
}
