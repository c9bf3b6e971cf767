// Positions of UVs beyond the mesh.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Library/Mapping/MappingCases.h"

using namespace quarn::test;

namespace {

Point3 extrapolated(const TriangleScreen& screen, const Point2& uv) {
    const Mapped mapped = map(screen, uv, true);
    EXPECT_TRUE(mapped.isAnswer);
    return mapped.point;
}

void expectNear(const Point3& a, const Point3& b, double tolerance) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "coordinate " << i;
}

void expectNaN(const Point3& point) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(point[i])) << "coordinate " << i;
}

// A triangle over (0, 0), (1, 0), (0, 1) in UV, moved there, on the plane z = height + slope * u.
Triangle slope(const Point2& moved, double height, double slope) {
    const auto at = [&](double u, double v) { return Point3(u, v, height + slope * u); };
    Triangle triangle =
        wholeTriangle(at(moved[0], moved[1]), at(moved[0] + 1.0, moved[1]), at(moved[0], moved[1] + 1.0));
    for (TriangleVertex& vertex : triangle.vertices) vertex.uv = {vertex.position[0], vertex.position[1]};
    computeFields(triangle);
    return triangle;
}

}  // namespace

TEST(ExtrapolateUV, FlatMeshGoesOnAsItsPlane) {
    const TriangleScreen screen(flatGrid({16, 12}));
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point2 uv(rng.uniform(-3.0, 4.0),
                        rng.coin() ? rng.uniform(-2.0, -0.001) : rng.uniform(1.001, 3.0));
        expectNear(extrapolated(screen, uv), {(uv[0] - 0.5) * 4.0, 0.0, (0.5 - uv[1]) * 3.0}, 1e-11);
    }
}

// Eight triangles in the tree: depth 3, so three positions of six are kept.
TEST(ExtrapolateUV, OddPlaneIsDropped) {
    Mesh mesh = flatGrid({2, 2});
    for (Triangle& triangle : mesh) {
        const bool isNearest = triangle.uvCentroid[0] > 0.7 && triangle.uvCentroid[1] > 0.6;
        if (!isNearest) continue;
        triangle.vertices[0].position[1] = 5.0;
        computeFields(triangle);
    }
    const TriangleScreen screen(mesh);
    expectNear(extrapolated(screen, {1.25, 1.25}), {3.0, 0.0, -2.25}, 1e-12);
}

TEST(ExtrapolateUV, CurvedMeshGoesOnBetweenThePlanesNearby) {
    const DomeShape shape;
    const TriangleScreen screen(dome({20, 20}, shape));
    const Point3 beyond = extrapolated(screen, {1.05, 1.05});
    const double theta = shape.minTheta + 1.05 * (shape.maxTheta - shape.minTheta);
    const double phi = shape.maxPhi - 1.05 * (shape.maxPhi - shape.minPhi);
    const Point3 onSphere = shape.radius * Point3(std::cos(phi) * std::sin(theta),
                                                  std::cos(phi) * std::cos(theta), std::sin(phi));
    // Tangent planes leave the sphere outwards.
    EXPECT_GT(length(beyond), shape.radius);
    EXPECT_LT(length(beyond - onSphere), 0.5);
}

// Both are equally far from their mean, so that the farther one in UV goes.
TEST(ExtrapolateUV, OfTwoTrianglesTheNearestOneGoesOn) {
    const TriangleScreen screen({slope({0.0, 0.0}, 0.0, 0.5), slope({4.0, 0.0}, 8.0, 0.25)});
    EXPECT_TRUE(sameBits(extrapolated(screen, {-1.0, 0.5}), Point3(-1.0, 0.5, -0.5)));
    EXPECT_TRUE(sameBits(extrapolated(screen, {6.0, 0.5}), Point3(6.0, 0.5, 9.5)));
}

// Four triangles: depth 2, so of four positions two are kept. In UV all are 4 apart.
TEST(ExtrapolateUV, FarthestGoesFirstAndTheMeanFollows) {
    const auto heights = [](double a, double b, double c, double d) {
        const TriangleScreen screen({slope({0.0, 0.0}, a, 0.0), slope({4.0, 0.0}, b, 0.0),
                                     slope({8.0, 0.0}, c, 0.0), slope({12.0, 0.0}, d, 0.0)});
        return extrapolated(screen, {-1.0, 0.5})[2];
    };
    // The mean of 0, 1, 9, 16 is 6.5: 16 goes, then 9 about 10/3.
    EXPECT_EQ(heights(0.0, 1.0, 9.0, 16.0), 0.5);
    EXPECT_EQ(heights(16.0, 9.0, 1.0, 0.0), 0.5);
    // The mean of 0, 5, 8, 11 is 6: 0 goes, then the mean is 8, where 5 and 11 tie: 11 was farther
    // from 6.
    EXPECT_EQ(heights(0.0, 11.0, 8.0, 5.0), 6.5);
}

TEST(ExtrapolateUV, SingleTriangleHasNoAnswerYetCounts) {
    const TriangleScreen screen({slope({0.0, 0.0}, 1.0, 1.0)});
    expectNaN(extrapolated(screen, {2.0, 2.0}));
    expectNaN(extrapolated(screen, {2.0, 2.0}));
}

TEST(ExtrapolateUV, GreatestDepthOfEarlierMeshesCounts) {
    TriangleScreen screen(flatGrid({16, 16}));
    screen.load({slope({0.0, 0.0}, 1.0, 1.0)});
    EXPECT_TRUE(sameBits(extrapolated(screen, {2.0, 2.0}), Point3(2.0, 2.0, 3.0)));
    screen.load({});
    expectNaN(extrapolated(screen, {3.0, 2.0}));
}

TEST(ExtrapolateUV, TrianglesWithoutAreaInUVTakeAStepButGiveNothing) {
    Mesh mesh = {slope({0.0, 0.0}, 0.0, 0.0), slope({4.0, 0.0}, 8.0, 0.0), slope({8.0, 0.0}, 9.0, 0.0)};
    mesh[0].uvDeterminant = 0.0;
    mesh[1].uvDeterminant = -0.0;
    // Three triangles: depth 1, so two steps.
    const TriangleScreen two(mesh);
    expectNaN(extrapolated(two, {-1.0, 0.5}));
    mesh[1].uvDeterminant = 1.0;
    const TriangleScreen one(mesh);
    EXPECT_EQ(extrapolated(one, {-1.0, 0.5})[2], 8.0);
}

TEST(ExtrapolateUV, UVThatIsNotFiniteGivesNaN) {
    const TriangleScreen screen(flatGrid({8, 8}));
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double u : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity})
        expectNaN(extrapolated(screen, {u, 0.5}));
}

TEST(ExtrapolateUV, HoleIsFilledFromItsRim) {
    const TriangleScreen screen(gridWithHoles({9, 5}, 1));
    expectNear(extrapolated(screen, {0.5, 0.5}), {0.0, 0.0, 0.0}, 1e-12);
}
