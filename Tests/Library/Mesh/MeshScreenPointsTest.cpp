#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

constexpr double kTolerance = 1e-5;
const Point3 kZero;
const Point3 kTowardsViewer(0.0, -1.0, 0.0);

// A right-angled triangle with edges of length 1 along X and Z; its face looks along -Y.
Triangle cornerTriangle() {
    return wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0});
}

// A screen that notes the positions of queries for normals.
class NormalScreen : public TriangleScreen {
public:
    Point3 normal;
    [[nodiscard]] Point3 getScreenNormal(const Point3&) const override { return normal; }
};

}  // namespace

TEST(MeshScreenNormal, IsTheFaceNormalNearTheSurfaceAndZeroFartherOff) {
    const TriangleScreen screen(flatGrid({4, 4}));
    for (const double side : {1.0, -1.0}) {
        EXPECT_TRUE(sameBits(screen.getScreenNormal({0.1, side * 0.5 * kTolerance, 0.2}), kTowardsViewer));
        EXPECT_TRUE(sameBits(screen.getScreenNormal({0.1, side * 0.99 * kTolerance, 0.2}), kTowardsViewer));
        EXPECT_TRUE(sameBits(screen.getScreenNormal({0.1, side * 1.01 * kTolerance, 0.2}), kZero));
        EXPECT_TRUE(sameBits(screen.getScreenNormal({0.1, side * 2.0 * kTolerance, 0.2}), kZero));
    }
}

TEST(MeshScreenNormal, EndsOneMillionthOfAnEdgeBesideTheTriangle) {
    const TriangleScreen screen({cornerTriangle()});
    EXPECT_TRUE(screen.isOnScreenSection({-0.99e-6, 0.0, 0.5}));
    EXPECT_FALSE(screen.isOnScreenSection({-1.01e-6, 0.0, 0.5}));
    EXPECT_TRUE(screen.isOnScreenSection({0.5, 0.0, -0.99e-6}));
    EXPECT_FALSE(screen.isOnScreenSection({0.5, 0.0, -1.01e-6}));
    EXPECT_TRUE(screen.isOnScreenSection({0.5, 0.0, 0.5000009}));
    EXPECT_FALSE(screen.isOnScreenSection({0.5, 0.0, 0.5000011}));
}

TEST(MeshScreenNormal, OfEachTriangleIsItsStoredNormal) {
    const TriangleScreen screen(dome({6, 6}));
    for (const Triangle& triangle : screen.mesh())
        EXPECT_TRUE(sameBits(screen.getScreenNormal(triangle.centroid), triangle.normal));
}

TEST(MeshScreenNormal, IsNotInterpolatedFromTheCorners) {
    Mesh mesh = flatGrid({1, 1});
    for (Triangle& triangle : mesh)
        for (TriangleVertex& vertex : triangle.vertices) vertex.normal = {1.0, 0.0, 0.0};
    EXPECT_TRUE(sameBits(TriangleScreen(mesh).getScreenNormal({0.1, 0.0, 0.1}), kTowardsViewer));
}

// The distance is measured in lengths of the stored normal, and the normal is handed out as it is.
TEST(MeshScreenNormal, StaleNormalOfLengthTwoReachesTwiceAsFar) {
    Mesh mesh = {cornerTriangle()};
    mesh[0].normal = mesh[0].normal * 2.0;
    const TriangleScreen screen(mesh);
    EXPECT_TRUE(sameBits(screen.getScreenNormal({0.2, 1.9 * kTolerance, 0.2}), mesh[0].normal));
    EXPECT_TRUE(sameBits(screen.getScreenNormal({0.2, 2.1 * kTolerance, 0.2}), kZero));
}

TEST(MeshScreenNormal, StaleEdgesStayInForce) {
    Mesh mesh = {cornerTriangle()};
    mesh[0].edge1 = {5.0, 0.0, 0.0};
    const TriangleScreen screen(mesh);
    EXPECT_TRUE(screen.isOnScreenSection({4.5, 0.0, 0.05}));
    EXPECT_FALSE(screen.isOnScreenSection({5.5, 0.0, 0.05}));
}

TEST(MeshScreenNormal, OfTwoLayersWithinReachIsThatOfTheNearerCentroid) {
    Mesh mesh = flatGrid({1, 1});
    Mesh other = flatGrid({1, 1});
    for (Triangle& triangle : other) {
        for (TriangleVertex& vertex : triangle.vertices) vertex.position[1] = 1e-5;
        std::swap(triangle.vertices[1], triangle.vertices[2]);
        computeFields(triangle);
    }
    mesh.insert(mesh.end(), other.begin(), other.end());
    const TriangleScreen screen(mesh);
    const Point3 beside = mesh[0].centroid;
    EXPECT_TRUE(sameBits(screen.getScreenNormal(beside + Point3(0.0, 0.2e-5, 0.0)), mesh[0].normal));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(beside + Point3(0.0, 0.8e-5, 0.0)), other[0].normal));
}

TEST(MeshScreenNormal, OfNoPositionIsZero) {
    const TriangleScreen screen(dome({4, 4}));
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double number : {kNaN, kInfinity, -kInfinity, 1e300, -1e300, 1e200}) {
        EXPECT_TRUE(sameBits(screen.getScreenNormal({number, 0.0, 0.0}), kZero)) << number;
        EXPECT_TRUE(sameBits(screen.getScreenNormal({0.0, number, number}), kZero)) << number;
    }
}

TEST(MeshScreenSection, UsesTheNormalOfTheDerivedClass) {
    NormalScreen screen;
    EXPECT_FALSE(screen.isOnScreenSection({}));
    screen.normal = {0.0, 0.0, 1e-300};
    EXPECT_TRUE(screen.isOnScreenSection({}));
    screen.normal = {-0.0, 0.0, -0.0};
    EXPECT_FALSE(screen.isOnScreenSection({}));
    screen.normal = {0.0, std::nan(""), 0.0};
    EXPECT_TRUE(screen.isOnScreenSection({}));
}

TEST(MeshScreenSection, DegenerateTriangleHoldsNothing) {
    const Point3 from(0.0, 0.0, 0.0);
    const Point3 to(1.0, 0.0, 0.0);
    const TriangleScreen line({wholeTriangle(from, to, {0.5, 0.0, 0.0})});
    const TriangleScreen spot({wholeTriangle(from, from, from)});
    EXPECT_FALSE(line.isOnScreenSection({0.25, 0.0, 0.0}));
    EXPECT_FALSE(line.isOnScreenSection(from));
    EXPECT_FALSE(spot.isOnScreenSection(from));
}

TEST(MeshScreenClosestPoint, AboveTheMiddleOfATriangleIsItsFoot) {
    const TriangleScreen screen({cornerTriangle()});
    for (const double height : {0.0, 1e-3, 1.0, 1000.0}) {
        const Point3 foot = screen.getClosestPoint({0.25, height, 0.5});
        EXPECT_LT(length(foot - Point3(0.25, 0.0, 0.5)), 1e-12) << height;
    }
}

TEST(MeshScreenClosestPoint, BeyondTheEdgeIsZero) {
    const TriangleScreen screen(flatGrid({4, 4}));
    EXPECT_TRUE(sameBits(screen.getClosestPoint({2.1, 0.0, 0.0}), kZero));
    EXPECT_TRUE(sameBits(screen.getClosestPoint({0.0, -3.0, 9.0}), kZero));
    EXPECT_FALSE(sameBits(screen.getClosestPoint({1.9, -3.0, 1.3}), kZero));
}

TEST(MeshScreenClosestPoint, IsZeroWhereTheNearestCentroidIsThatOfAnotherTriangle) {
    // A long triangle holds the position at its tip; the small one beside has the nearer centroid.
    const TriangleScreen screen({wholeTriangle({0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {0.0, 0.0, 1.0}),
                                 wholeTriangle({9.0, 0.0, -1.0}, {10.0, 0.0, -1.0}, {9.5, 0.0, -0.5})});
    const Point3 tip(9.5, 0.0, 0.01);
    EXPECT_TRUE(screen.isOnScreenSection(tip));
    EXPECT_TRUE(sameBits(screen.getClosestPoint(tip), kZero));
}

TEST(MeshScreenClosestPoint, IsClampedToTheTriangle) {
    const Point3 far(1.0, 1.0, 1.0);
    const TriangleScreen screen(
        {wholeTriangle(far, far + Point3(1.0, 0.0, 0.0), far + Point3(0.0, 0.0, 1.0))});
    EXPECT_EQ(screen.getClosestPoint(far + Point3(-0.5e-6, 0.0, 0.5))[0], 1.0);
    EXPECT_EQ(screen.getClosestPoint(far + Point3(0.5, 0.0, -0.5e-6))[2], 1.0);
    EXPECT_EQ(screen.getClosestPoint(far + Point3(1.0 + 0.9e-6, 0.0, -0.5e-6))[0], 2.0);
    EXPECT_EQ(screen.getClosestPoint(far + Point3(-0.5e-6, 0.0, 1.0 + 0.9e-6))[2], 2.0);
    EXPECT_TRUE(sameBits(screen.getClosestPoint(far + Point3(-1.1e-6, 0.0, 0.5)), kZero));
}

TEST(MeshScreenClosestPoint, OfADegenerateTriangleIsZero) {
    const Point3 from(1.0, 1.0, 1.0);
    const TriangleScreen screen({wholeTriangle(from, from, from)});
    EXPECT_TRUE(sameBits(screen.getClosestPoint(from), kZero));
}

TEST(MeshScreenClosestPoint, OfAPositionThatNoCentroidIsNearestToIsZero) {
    const TriangleScreen screen(flatGrid({2, 2}));
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double number : {std::nan(""), kInfinity, -kInfinity, 1e200, -1.7e308}) {
        EXPECT_TRUE(sameBits(screen.getClosestPoint({number, 0.0, 0.0}), kZero)) << number;
        EXPECT_TRUE(sameBits(screen.getClosestPoint({0.1, number, 0.1}), kZero)) << number;
    }
}
