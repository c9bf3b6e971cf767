#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjTriangles.h>

#include <cmath>
#include <limits>
#include <string>

#include "Library/Obj/ObjCases.h"
#include "Support/Mesh/TriangleBits.h"
#include "Support/Rng.h"

using namespace quarn;
using namespace quarn::test;

namespace {

using Matrix4 = Matrix<float, 4>;

std::vector<Triangle> trianglesOf(const std::string& text, const Matrix4& transform = Matrix4::identity()) {
    std::vector<Triangle> triangles;
    EXPECT_FALSE(
        detail::buildObjTriangles(scannedText(text).lists, transform, triangles).failure.has_value());
    return triangles;
}

const std::string kTriangle =
    "v 0 0 0\nv 2 0 0\nv 0 0 4\nvt 0 1\nvt 1 1\nvt 0 0.25\nvn 5 6 7\nf 1/1/1 2/2/1 3/3/1\n";

}  // namespace

TEST(ObjTriangleValues, CornersHoldThePositionsAndUVsOfTheText) {
    const std::vector<Triangle> triangles = trianglesOf(kTriangle);
    ASSERT_EQ(triangles.size(), 1U);
    EXPECT_EQ(triangles[0].vertices[1].position, Point3(2, 0, 0));
    EXPECT_EQ(triangles[0].vertices[2].position, Point3(0, 0, 4));
    EXPECT_EQ(triangles[0].vertices[0].uv, Point2(0, 1));
    EXPECT_EQ(triangles[0].vertices[2].uv, Point2(0, 0.25));
}

TEST(ObjTriangleValues, DerivedFieldsAreComputed) {
    const Triangle triangle = trianglesOf(kTriangle)[0];
    EXPECT_EQ(triangle.edge1, Point3(2, 0, 0));
    EXPECT_EQ(triangle.edge2, Point3(0, 0, 4));
    EXPECT_EQ(triangle.uvEdge2, Point2(0, -0.75));
    EXPECT_EQ(triangle.uvDeterminant, -0.75);
    EXPECT_NEAR(triangle.centroid[2], 4.0 / 3.0, 1e-14);
    EXPECT_NEAR(triangle.uvCentroid[0], 1.0 / 3.0, 1e-14);
}

TEST(ObjTriangleValues, NormalsFollowTheWindingAndNotTheText) {
    const Triangle triangle = trianglesOf(kTriangle)[0];
    // X cross Z is minus Y.
    EXPECT_EQ(triangle.normal, Point3(0, -1, 0));
    for (const TriangleVertex& vertex : triangle.vertices)
        EXPECT_TRUE(sameBits(vertex.normal, triangle.normal));
}

TEST(ObjTriangleValues, NormalsOfTheTextHaveNoEffect) {
    std::string other = kTriangle;
    other.replace(other.find("vn 5 6 7"), 8, "vn x");
    EXPECT_TRUE(sameTriangles(trianglesOf(other), trianglesOf(kTriangle)));
}

TEST(ObjTriangleValues, DegenerateTriangleHasTheZeroNormal) {
    const Triangle triangle = trianglesOf("v 1 1 1\nvn 0 0 1\nf 1//1 1//1 1//1\n")[0];
    EXPECT_EQ(triangle.normal, Point3());
    EXPECT_EQ(triangle.vertices[2].normal, Point3());
}

TEST(ObjTriangleValues, CornerWithoutTextureCoordinateKeepsNoUV) {
    const Triangle triangle = trianglesOf("v 1 1 1\nvt 0 0\nvn 0 0 1\nf 1//1 1/1/1 1/2/1\n")[0];
    EXPECT_EQ(triangle.vertices[0].uv, kNoUV);
    EXPECT_EQ(triangle.vertices[1].uv, Point2(0, 0));
    EXPECT_EQ(triangle.vertices[2].uv, kNoUV);
}

TEST(ObjTriangleValues, PositionsGoThroughTheTransformInFloats) {
    // Turned around Z by a quarter, scaled by three, moved.
    Matrix4 transform;
    transform(0, 1) = -3;
    transform(1, 0) = 3;
    transform(2, 2) = 3;
    transform(0, 3) = 100;
    transform(3, 0) = 77;  // no row of a position
    const Triangle triangle = trianglesOf(kTriangle, transform)[0];
    EXPECT_EQ(triangle.vertices[0].position, Point3(100, 0, 0));
    EXPECT_EQ(triangle.vertices[1].position, Point3(100, 6, 0));
    EXPECT_EQ(triangle.vertices[2].position, Point3(100, 0, 12));
    // Y cross Z is X.
    EXPECT_EQ(triangle.normal, Point3(1, 0, 0));
}

TEST(ObjTriangleValues, SumOfATransformBeginsWithTheTranslation) {
    // In floats 2^24 + 1 is 2^24, and the two small terms are lost one after the other.
    Matrix4 transform;
    transform(0, 0) = transform(0, 1) = 1;
    transform(0, 3) = 16777216;
    const std::string text = "v 1 1 0\nvn 0 0 1\nf 1//1 1//1 1//1\n";
    EXPECT_EQ(trianglesOf(text, transform)[0].vertices[0].position[0], 16777216.0);
}

TEST(ObjTriangleValues, IdentityLeavesEvenInfiniteValues) {
    // Any other matrix makes NaN of the product of infinity and zero.
    const std::string text = "v 1e39 1 2\nvn 0 0 1\nf 1//1 1//1 1//1\n";
    EXPECT_EQ(trianglesOf(text)[0].vertices[0].position[1], 1.0);
    Matrix4 almost = Matrix4::identity();
    almost(3, 0) = 1e-30F;
    EXPECT_TRUE(std::isnan(trianglesOf(text, almost)[0].vertices[0].position[1]));
}

TEST(ObjTriangleValues, MatrixWithANaNIsNoIdentity) {
    Matrix4 transform = Matrix4::identity();
    transform(3, 3) = std::numeric_limits<float>::quiet_NaN();
    const std::string text = "v 1e39 1 2\nvn 0 0 1\nf 1//1 1//1 1//1\n";
    EXPECT_TRUE(std::isnan(trianglesOf(text, transform)[0].vertices[0].position[1]));
}

TEST(ObjTriangleValues, TrianglesAreAppendedToTheList) {
    std::vector<Triangle> triangles(2);
    (void)detail::buildObjTriangles(scannedText(kTriangle).lists, Matrix4::identity(), triangles);
    EXPECT_EQ(triangles.size(), 3U);
}
