// What mapInto3D() answers and what it writes, case by case.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Library/Mapping/MappingCases.h"

using namespace quarn::test;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// What the caller's position holds before the call.
const Point3 kBefore(7.0, 8.0, 9.0);
const Point2 kInside(0.3, 0.4);
const Point2 kOutside(1.5, 0.5);

// Sheet of width 4 and height 3 in the plane y = 0: u = 0 is x = -2, v = 0 is z = 1.5.
Point3 onSheet(const Point2& uv) {
    return {(uv[0] - 0.5) * 4.0, 0.0, (0.5 - uv[1]) * 3.0};
}

void expectNear(const Point3& a, const Point3& b, double tolerance = 1e-12) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "coordinate " << i;
}

}  // namespace

TEST(MapInto3D, ScreenWithoutParameterisationGivesFalseAndRemembersNothing) {
    TriangleScreen screen(flatGrid({4, 3}));
    screen.parameterized = false;
    {
        const LogCapture capture(kScreenLogger);
        for (const bool extrapolate : {false, true}) {
            const Mapped mapped = map(screen, kInside, extrapolate, kBefore);
            EXPECT_FALSE(mapped.isAnswer);
            EXPECT_TRUE(sameBits(mapped.point, kBefore));
        }
        EXPECT_TRUE(capture.records().empty());
    }
    screen.parameterized = true;
    EXPECT_FALSE(wasCached(screen, kInside));
    screen.parameterized = false;
    EXPECT_FALSE(map(screen, kInside, true).isAnswer) << "what was remembered is not looked at";
}

TEST(MapInto3D, UVInATriangleIsOnTheMeshWhateverTheFlag) {
    for (const bool extrapolate : {false, true}) {
        const TriangleScreen screen(flatGrid({4, 3}));
        for (int again = 0; again < 2; ++again) {
            const Mapped mapped = map(screen, kInside, extrapolate, kBefore);
            EXPECT_TRUE(mapped.isAnswer);
            expectNear(mapped.point, onSheet(kInside));
        }
    }
}

TEST(MapInto3D, CornersOfTheMeshAreOnTheMesh) {
    const TriangleScreen screen(flatGrid({7, 5}));
    for (const Triangle& triangle : screen.mesh())
        for (const TriangleVertex& vertex : triangle.vertices) {
            const Mapped mapped = map(screen, vertex.uv, false);
            EXPECT_TRUE(mapped.isAnswer);
            expectNear(mapped.point, vertex.position);
        }
}

TEST(MapInto3D, UVInNoTriangleLeavesThePositionAsItWas) {
    const TriangleScreen screen(flatGrid({4, 3}));
    const Mapped mapped = map(screen, kOutside, false, kBefore);
    EXPECT_FALSE(mapped.isAnswer);
    EXPECT_TRUE(sameBits(mapped.point, kBefore));
}

TEST(MapInto3D, SecondRefusalWritesThePositionOfTheFirstCaller) {
    const TriangleScreen screen(flatGrid({4, 3}));
    (void)map(screen, kOutside, false, kBefore);
    const Mapped mapped = map(screen, kOutside, false, {1.0, 2.0, 3.0});
    EXPECT_FALSE(mapped.isAnswer);
    EXPECT_TRUE(sameBits(mapped.point, kBefore));
}

TEST(MapInto3D, RefusedThenExtrapolatedThenRefusedHandsOutTheExtrapolatedPosition) {
    const TriangleScreen screen(flatGrid({4, 3}));
    (void)map(screen, kOutside, false, kBefore);
    const Mapped second = map(screen, kOutside, true, kBefore);
    EXPECT_TRUE(second.isAnswer);
    expectNear(second.point, onSheet(kOutside));
    const Mapped third = map(screen, kOutside, false, kBefore);
    EXPECT_FALSE(third.isAnswer);
    EXPECT_TRUE(sameBits(third.point, second.point));
    const Mapped fourth = map(screen, kOutside, true, kBefore);
    EXPECT_TRUE(sameBits(fourth, second));
}

TEST(MapInto3D, ExtrapolatedAnswerIsHandedOutEvenWhereItIsRefused) {
    const TriangleScreen screen(flatGrid({4, 3}));
    const Mapped first = map(screen, kOutside, true);
    EXPECT_TRUE(first.isAnswer);
    const Mapped second = map(screen, kOutside, false, kBefore);
    EXPECT_FALSE(second.isAnswer);
    EXPECT_TRUE(sameBits(second.point, first.point));
}

TEST(MapInto3D, HoleIsOutOfTheMesh) {
    const TriangleScreen screen(gridWithHoles({9, 5}, 1));
    EXPECT_FALSE(screen.hasValidBoundary());
    const LogCapture capture(kScreenLogger, log4cxx::Level::getDebug());
    EXPECT_FALSE(map(screen, {0.5, 0.5}, false).isAnswer);
    EXPECT_TRUE(capture.records().empty()) << "nothing above trace level";
    EXPECT_TRUE(map(screen, {0.5, 0.1}, false).isAnswer);
}

// The stored fields of this triangle hold far more than its corners, which make the rectangle.
TEST(MapInto3D, NothingBeyondTheRectangleIsLookedUp) {
    Mesh mesh = {wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0})};
    mesh[0].uvEdge1 = {16.0, 0.0};
    mesh[0].uvEdge2 = {0.0, 16.0};
    mesh[0].uvDeterminant = 256.0;
    mesh[0].vertices[0].uv = {0.5, 0.5};
    mesh[0].vertices[1].uv = {1.0, 0.25};
    mesh[0].vertices[2].uv = {0.75, 1.0};
    const TriangleScreen screen(mesh);
    EXPECT_TRUE(map(screen, {1.0, 1.0}, false).isAnswer);
    EXPECT_FALSE(map(screen, {std::nextafter(1.0, 2.0), 0.75}, false).isAnswer);
    EXPECT_FALSE(map(screen, {0.75, std::nextafter(1.0, 2.0)}, false).isAnswer);
    // Left and above it, where only negative parameters would hold it.
    mesh[0].uvEdge1 = {-16.0, 0.0};
    mesh[0].uvEdge2 = {0.0, -16.0};
    mesh[0].vertices[0].uv = {0.75, 0.75};
    mesh[0].vertices[1].uv = {0.5, 0.25};
    const TriangleScreen other(mesh);
    EXPECT_TRUE(map(other, {0.5, 0.25}, false).isAnswer);
    EXPECT_FALSE(map(other, {std::nextafter(0.5, 0.0), 0.5}, false).isAnswer);
    EXPECT_FALSE(map(other, {0.625, std::nextafter(0.25, 0.0)}, false).isAnswer);
}

TEST(MapInto3D, TriangleWithoutAreaInUVHoldsNothing) {
    Mesh mesh = {wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0})};
    mesh[0].uvDeterminant = 0.0;
    const TriangleScreen screen(mesh);
    const LogCapture capture(kScreenLogger, log4cxx::Level::getDebug());
    EXPECT_FALSE(map(screen, {0.25, 0.25}, false).isAnswer);
    EXPECT_TRUE(capture.records().empty());
}

TEST(MapInto3D, MeshWithoutUVsHoldsOnlyNoUV) {
    Mesh mesh = flatGrid({4, 3});
    stripUV(mesh);
    const TriangleScreen screen(mesh);
    EXPECT_FALSE(map(screen, kInside, false).isAnswer);
    EXPECT_FALSE(map(screen, kNoUV, false).isAnswer) << "all triangles have no area in UV";
    const Mapped mapped = map(screen, kInside, true);
    EXPECT_TRUE(mapped.isAnswer);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(mapped.point[i]));
}

TEST(MapInto3D, EmptyScreenRaisesNothing) {
    TriangleScreen screen;
    for (int built = 0; built < 2; ++built) {
        for (const Point2& uv : {Point2(0.5, built), Point2(kNaN, kNaN), Point2(0.0, kInfinity)}) {
            EXPECT_FALSE(map(screen, uv, false, kBefore).isAnswer);
            const Mapped mapped = map(screen, uv, true, kBefore);
            EXPECT_TRUE(mapped.isAnswer);
            for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(mapped.point[i]));
        }
        screen.load({});
    }
}

TEST(MapInto3D, UVThatIsNoNumberLiesInNoTriangle) {
    const TriangleScreen screen(flatGrid({9, 9}));
    for (const Point2& uv : {Point2(kNaN, 0.5), Point2(0.5, kNaN), Point2(kNaN, kNaN)}) {
        for (int again = 0; again < 2; ++again) {
            const Mapped mapped = map(screen, uv, false, kBefore);
            EXPECT_FALSE(mapped.isAnswer);
            EXPECT_TRUE(sameBits(mapped.point, kBefore));
            EXPECT_TRUE(map(screen, uv, true).isAnswer);
        }
    }
}
