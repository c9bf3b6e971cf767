#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>

#include <QuarnScreen/Detail/Editing/UnitRectangle.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/Mesh/Meshes.h"

using namespace quarn::test;

namespace {

// The minimum x, y, z, then the maximum x and y, from the documented start values.
std::array<double, 5> referenceExtent(const std::vector<Triangle>& mesh) {
    std::array<double, 5> extent = {1.7976931348623157e308, 1.7976931348623157e308, 1.7976931348623157e308,
                                    2.2250738585072014e-308, 2.2250738585072014e-308};
    for (const Triangle& triangle : mesh)
        for (const TriangleVertex& corner : triangle.vertices) {
            for (std::size_t i = 0; i < 3; ++i)
                if (corner.position[i] < extent[i]) extent[i] = corner.position[i];
            for (std::size_t i = 0; i < 2; ++i)
                if (corner.position[i] > extent[3 + i]) extent[3 + i] = corner.position[i];
        }
    return extent;
}

std::vector<Triangle> plainlyScaled(std::vector<Triangle> mesh) {
    const auto before = referenceExtent(mesh);
    const double width = before[3] - before[0];
    const double height = before[4] - before[1];
    const double s = width < height ? height : width;
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices) {
            const Point3 p = corner.position;
            corner.position =
                Point3((p[0] - before[0]) / s - 0.5, (p[1] - before[1]) / s - 0.5, (p[2] - before[2]) / s);
        }
    const auto [minX, minY, z, maxX, maxY] = referenceExtent(mesh);
    const Point3 lowerLeft(minX - 0.2, minY - 0.2, z);
    const Point3 upperRight(maxX + 0.2, maxY + 0.2, z);
    const Point3 upperLeft(lowerLeft[0], upperRight[1], z);
    const Point3 lowerRight(upperRight[0], lowerLeft[1], z);
    for (const auto& corners :
         {std::array{lowerLeft, upperRight, upperLeft}, std::array{lowerLeft, lowerRight, upperRight}}) {
        Triangle triangle;
        for (std::size_t i = 0; i < 3; ++i) triangle.vertices[i].position = corners[i];
        triangle.computeCentroids();
        triangle.computeGeometry();
        for (TriangleVertex& corner : triangle.vertices) corner.normal = triangle.normal;
        mesh.push_back(triangle);
    }
    return mesh;
}

std::string printedBy(const std::function<void()>& call) {
    ::testing::internal::CaptureStdout();
    call();
    return ::testing::internal::GetCapturedStdout();
}

void expectLikeReference(const std::vector<Triangle>& mesh) {
    std::vector<Triangle> scaled = mesh;
    EXPECT_EQ(printedBy([&] { quarn::detail::scaleToUnitRectangle(scaled); }), "...\n");
    ASSERT_TRUE(sameTriangles(scaled, plainlyScaled(mesh)));
}

void move(std::vector<Triangle>& mesh, const Point3& by) {
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices) corner.position = corner.position + by;
}

}  // namespace

TEST(UnitRectangle, SquareBecomesTheUnitSquareBeforeARectangle) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, "v 2 3 7\nv 6 3 7\nv 6 5 8\nvt 0 0\nvt 1 0\nvt 1 1\n" + kNormal +
                                   "f 1/1/1 2/2/1 3/3/1\n"),
              kLoaded);
    const Triangle before = screen.mesh().at(0);
    EXPECT_EQ(printedBy([&] { screen.scaleToUnitRectangle(); }), "...\n");
    ASSERT_EQ(screen.mesh().size(), 3U);
    const Triangle& first = screen.mesh()[0];
    // The width of 4 is the larger one.
    EXPECT_EQ(first.vertices[0].position, Point3(-0.5, -0.5, 0.0));
    EXPECT_EQ(first.vertices[1].position, Point3(0.5, -0.5, 0.0));
    EXPECT_EQ(first.vertices[2].position, Point3(0.5, 0.0, 0.25));
    Triangle moved = before;
    for (std::size_t i = 0; i < 3; ++i) moved.vertices[i].position = first.vertices[i].position;
    EXPECT_TRUE(sameBits(first, moved)) << "only positions change";

    const Triangle& back = screen.mesh()[1];
    EXPECT_EQ(back.vertices[0].position, Point3(-0.7, -0.7, 0.0));
    EXPECT_EQ(back.vertices[1].position, Point3(0.7, 0.2, 0.0));
    EXPECT_EQ(back.vertices[2].position, Point3(-0.7, 0.2, 0.0));
    EXPECT_EQ(screen.mesh()[2].vertices[1].position, Point3(0.7, -0.7, 0.0));
    for (std::size_t i = 1; i < 3; ++i)
        for (const TriangleVertex& corner : screen.mesh()[i].vertices) {
            EXPECT_EQ(corner.uv, kNoUV);
            EXPECT_EQ(corner.normal, Point3(0.0, 0.0, 1.0));
        }
}

TEST(UnitRectangle, RandomMeshesAreLikeTheReference) {
    for (int i = 0; i < seedCount(300); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        Mesh mesh = soup(rng, rng.integer(1, 20));
        scale(mesh, rng.spread(-20, 20));
        // Often wholly on the negative side of an axis or of all.
        move(mesh, rng.point(-4.0, 2.0));
        expectLikeReference(mesh);
    }
}

TEST(UnitRectangle, GreatestBelowZeroCountsAsZero) {
    std::vector<Triangle> mesh = {wholeTriangle({-8.0, -2.0, -1.0}, {-6.0, -2.0, -1.0}, {-6.0, -1.0, -1.0})};
    expectLikeReference(mesh);
    (void)printedBy([&] { quarn::detail::scaleToUnitRectangle(mesh); });
    // Eight wide, from -8 to zero.
    EXPECT_EQ(mesh[0].vertices[0].position, Point3(-0.5, -0.5, 0.0));
    EXPECT_EQ(mesh[0].vertices[2].position, Point3(-0.25, -0.375, 0.0));
    EXPECT_EQ(mesh[1].vertices[1].position, Point3(std::numeric_limits<double>::min() + 0.2,
                                                   std::numeric_limits<double>::min() + 0.2, 0.0));
}

TEST(UnitRectangle, MeshWithoutExtentHasNoFiniteCorner) {
    const Point3 origin;
    expectLikeReference({wholeTriangle(origin, origin, origin)});
    const Point3 far(1e300, 1e300, 1e300);
    expectLikeReference({wholeTriangle(far, far, far)});
}

TEST(UnitRectangle, EmptyMeshGetsTwoHugeTriangles) {
    expectLikeReference({});
    OpenObjScreen screen;
    EXPECT_EQ(printedBy([&] { screen.scaleToUnitRectangle(); }), "...\n");
    ASSERT_EQ(screen.mesh().size(), 2U);
    constexpr double kGreatest = std::numeric_limits<double>::max();
    EXPECT_EQ(screen.mesh()[0].vertices[0].position, Point3(kGreatest, kGreatest, kGreatest));
    EXPECT_EQ(screen.mesh()[0].vertices[1].position, Point3(0.2, 0.2, kGreatest));
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusNotLoaded);
}

TEST(UnitRectangle, AllElseOfTheScreenStaysUntilTheNextLoad) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, squareAt('2')), kLoaded);
    const std::vector<Point3> outline = screen.outline().points;
    const IntersectionSet hits = screen.intersect(kRayFrom, kRayTo);
    (void)printedBy([&] { screen.scaleToUnitRectangle(); });
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
    EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::calculateHash(squareAt('2')));
    EXPECT_EQ(screen.getLoadedFileContents(), squareAt('2'));
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_TRUE(sameBits(screen.outline().points, outline));
    EXPECT_EQ(screen.intersect(kRayFrom, kRayTo).count(), hits.count());
    EXPECT_EQ(hits.count(), 1);

    ReferenceObjScreen plain;
    EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
    EXPECT_TRUE(isLike(screen, plain));
    EXPECT_TRUE(screen.isOnScreenSection(kRayTo));
}
