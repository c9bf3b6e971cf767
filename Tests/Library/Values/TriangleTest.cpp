#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/SpecialArguments.h"

using namespace quarn::test;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Triangle fromCorners(const reference::Corners& corners) {
    Triangle triangle;
    for (std::size_t k = 0; k < 3; ++k) {
        triangle.vertices[k].position = point(corners.position[k]);
        triangle.vertices[k].uv = point(corners.uv[k]);
    }
    return triangle;
}

void expectLikeReference(const reference::Corners& corners) {
    Triangle triangle = fromCorners(corners);
    triangle.computeGeometry();
    triangle.computeCentroids();
    const reference::Derived expected = reference::derive(corners);
    EXPECT_TRUE(sameBits(triangle.normal, point(expected.normal)));
    EXPECT_TRUE(sameBits(triangle.edge1, point(expected.edge1)));
    EXPECT_TRUE(sameBits(triangle.edge2, point(expected.edge2)));
    EXPECT_TRUE(sameBits(triangle.uvEdge1, point(expected.uvEdge1)));
    EXPECT_TRUE(sameBits(triangle.uvEdge2, point(expected.uvEdge2)));
    EXPECT_TRUE(sameBits(triangle.uvDeterminant, expected.uvDeterminant));
    EXPECT_TRUE(sameBits(triangle.centroid, point(expected.centroid)));
    EXPECT_TRUE(sameBits(triangle.uvCentroid, point(expected.uvCentroid)));
}

}  // namespace

TEST(Triangle, StartsWithoutUVAndWithEverythingElseZero) {
    const Triangle triangle;
    for (const TriangleVertex& vertex : triangle.vertices) {
        EXPECT_EQ(vertex.position, Point3());
        EXPECT_EQ(vertex.normal, Point3());
        EXPECT_EQ(vertex.uv, Point2(-999.0, -999.0));
    }
    EXPECT_EQ(triangle.normal, Point3());
    EXPECT_EQ(triangle.edge1, Point3());
    EXPECT_EQ(triangle.edge2, Point3());
    EXPECT_EQ(triangle.uvEdge1, Point2());
    EXPECT_EQ(triangle.uvEdge2, Point2());
    EXPECT_EQ(triangle.uvDeterminant, 0.0);
    EXPECT_EQ(triangle.centroid, Point3());
    EXPECT_EQ(triangle.uvCentroid, Point2());
}

TEST(Triangle, DerivesWhatItsCornersSay) {
    for (int i = 0; i < seedCount(10000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        reference::Corners corners;
        for (auto& position : corners.position) position = plain(randomPoint(rng, exponents));
        for (auto& uv : corners.uv)
            for (double& x : uv) x = rng.spread(exponents.low, exponents.high);
        expectLikeReference(corners);
    }
}

TEST(Triangle, DerivesTheDocumentedFieldsFromSpecialValues) {
    withSpecialArguments<15>({0.5, 1.5, -2.0, 3.0, 0.25, 1.0, -1.0, 2.0, 4.0, 0.0, 0.1, 1.0, 0.2, 0.3, 0.9},
                             [](const std::array<double, 15>& x) {
                                 reference::Corners corners;
                                 for (std::size_t k = 0; k < 9; ++k) corners.position[k / 3][k % 3] = x[k];
                                 for (std::size_t k = 0; k < 6; ++k) corners.uv[k / 2][k % 2] = x[9 + k];
                                 expectLikeReference(corners);
                             });
}

TEST(Triangle, WithCollinearCornersHasZeroNormalAndNoParameters) {
    const Triangle parallel = triangleOf({0.0, 0.0, 0.0}, {1.0, 2.0, 3.0}, {2.0, 4.0, 6.0});
    const Triangle onePoint = triangleOf({1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}, {1.0, 2.0, 3.0});
    for (const Triangle& triangle : {parallel, onePoint}) {
        EXPECT_TRUE(sameBits(triangle.normal, Point3()));
        double a = 5.0;
        double b = 6.0;
        EXPECT_FALSE(triangle.barycentric({1.0, 2.0, 3.0}, a, b, true));
        EXPECT_EQ(a, 5.0);
        EXPECT_EQ(b, 6.0);
    }
}

TEST(Triangle, NormalWithANaNBecomesZeroButAnInfiniteOneStays) {
    // The cross product is (0, 0, 1e-200): its length underflows to zero, and 0/0 is NaN.
    EXPECT_TRUE(sameBits(triangleOf({}, {1e-100, 0.0, 0.0}, {0.0, 1e-100, 0.0}).normal, Point3()));
    // The cross product is (1e-200, 1e-200, 1e-200), without a zero: 1e-200 / 0 is infinite.
    const Triangle tiny = triangleOf({}, {1e-100, -1e-100, 0.0}, {0.0, 1e-100, -1e-100});
    EXPECT_EQ(tiny.normal, Point3(kInfinity, kInfinity, kInfinity));
    // The length overflows although the coordinates do not.
    EXPECT_EQ(triangleOf({}, {1e100, 0.0, 0.0}, {0.0, 1e100, 0.0}).normal, Point3());
    EXPECT_EQ(triangleOf({}, {1e200, 0.0, 0.0}, {0.0, 1e200, 0.0}).normal, Point3());
}

TEST(Triangle, ComputingAgainForgetsTheFormerCorners) {
    Triangle triangle = unitTriangle();
    EXPECT_EQ(triangle.normal, Point3(0.0, 0.0, 1.0));
    triangle.vertices[2].position = {2.0, 0.0, 0.0};
    triangle.computeGeometry();
    EXPECT_EQ(triangle.normal, Point3());
}

TEST(Triangle, NormalIsAUnitVectorAcrossBothEdges) {
    // Coordinates below 20 with errors of a few units of roundoff each; the cross product is at
    // least 1 long.
    constexpr double kTolerance = 1e-12;
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 p0 = rng.point(-10.0, 10.0);
        const Point3 p1 = rng.point(-10.0, 10.0);
        const Triangle t = triangleOf(p0, p1, rng.point(-10.0, 10.0));
        if (length(cross(t.edge1, t.edge2)) < 1.0) continue;
        EXPECT_NEAR(length(t.normal), 1.0, 1e-15);
        EXPECT_NEAR(dot(t.normal, t.edge1), 0.0, kTolerance);
        EXPECT_NEAR(dot(t.normal, t.edge2), 0.0, kTolerance);
        EXPECT_GT(dot(t.normal, cross(t.edge1, t.edge2)), 0.0);
    }
}

TEST(Triangle, CentroidTakesAThirdAsFifteenDigits) {
    Triangle triangle = triangleOf({3.0, 0.0, -3.0}, {3.0, 0.0, -3.0}, {3.0, 0.0, -3.0});
    for (TriangleVertex& vertex : triangle.vertices) vertex.uv = {1.0, 0.0};
    triangle.computeCentroids();
    EXPECT_EQ(triangle.centroid, Point3(9.0 * 0.333333333333333, 0.0, -9.0 * 0.333333333333333));
    EXPECT_LT(triangle.centroid[0], 3.0);
    EXPECT_EQ(triangle.uvCentroid, Point2(3.0 * 0.333333333333333, 0.0));
}

TEST(Triangle, CentroidAddsTheCornersInTheirOrder) {
    Triangle triangle = triangleOf({1e16, 0.0, 0.0}, {1.0, 0.0, 0.0}, {-1e16, 0.0, 0.0});
    triangle.computeCentroids();
    EXPECT_EQ(triangle.centroid[0], 0.0);
}

TEST(Triangle, UVDeterminantIsTwiceTheSignedArea) {
    Triangle triangle;
    triangle.vertices[0].uv = {1.0, 1.0};
    triangle.vertices[1].uv = {5.0, 2.0};
    triangle.vertices[2].uv = {3.0, 9.0};
    triangle.computeGeometry();
    EXPECT_EQ(triangle.uvDeterminant, 4.0 * 8.0 - 1.0 * 2.0);
    std::swap(triangle.vertices[1], triangle.vertices[2]);
    triangle.computeGeometry();
    EXPECT_EQ(triangle.uvDeterminant, -30.0);
}

TEST(Triangle, PointAndUVAtParametersAddUpFromLeftToRight) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        Triangle t;
        t.vertices[0].position = randomPoint(rng, exponents);
        t.edge1 = randomPoint(rng, exponents);
        t.edge2 = randomPoint(rng, exponents);
        t.vertices[0].uv = {rng.uniform(0.0, 1.0), rng.uniform(0.0, 1.0)};
        t.uvEdge1 = {rng.uniform(-1.0, 1.0), rng.uniform(-1.0, 1.0)};
        t.uvEdge2 = {rng.uniform(-1.0, 1.0), rng.uniform(-1.0, 1.0)};
        const double a = rng.spread(-10, 3);
        const double b = rng.spread(-10, 3);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_TRUE(
                sameBits(t.pointAt(a, b)[k], (t.vertices[0].position[k] + a * t.edge1[k]) + b * t.edge2[k]));
        for (std::size_t k = 0; k < 2; ++k)
            EXPECT_TRUE(
                sameBits(t.uvAt(a, b)[k], (t.vertices[0].uv[k] + a * t.uvEdge1[k]) + b * t.uvEdge2[k]));
    }
}
