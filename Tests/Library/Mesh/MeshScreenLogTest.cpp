// Messages about the boundary of a mesh, and no other messages.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include <Common/ZelmoreException.h>

#include "Support/LogCapture.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

constexpr const wchar_t* kLogger = L"Quarn.QuarnScreen.ScreenGeometry";

std::vector<LogRecord> recordsOf(const std::function<void()>& work,
                                 const log4cxx::LevelPtr& level = log4cxx::Level::getAll()) {
    const LogCapture log(kLogger, level);
    work();
    return log.records();
}

std::string edgesLeft(int count) {
    return "Multiple boundaries are not currently supported and there are " + std::to_string(count) +
           " unprocessed edges remaining in screen mesh!";
}

Mesh withoutUV(Mesh mesh) {
    stripUV(mesh);
    return mesh;
}

// A tetrahedron, of which every edge belongs to two triangles.
Mesh closedSurface() {
    const Point3 a(0.0, 0.0, 0.0);
    const Point3 b(1.0, 0.0, 0.0);
    const Point3 c(0.0, 1.0, 0.0);
    const Point3 d(0.0, 0.0, 1.0);
    return withoutUV(
        {wholeTriangle(a, b, c), wholeTriangle(a, b, d), wholeTriangle(b, c, d), wholeTriangle(c, a, d)});
}

}  // namespace

TEST(MeshScreenLog, SecondOutlineIsWarnedOfWithTheNumberOfItsEdges) {
    // A grid of one cell has a boundary of 4 edges, and one of 3 by 2 cells has 10.
    for (const auto& [size, left] : {std::pair(GridSize{1, 1}, 4), std::pair(GridSize{3, 2}, 10)}) {
        TriangleScreen screen;
        const Mesh pieces = separatePieces(2, size);
        const auto records = recordsOf([&] { screen.load(pieces); });
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(records[0].level, "WARN");
        EXPECT_EQ(records[0].logger, "Quarn.QuarnScreen.ScreenGeometry");
        EXPECT_EQ(records[0].message, edgesLeft(left));
        EXPECT_NE(records[0].file.find("MeshScreenSampling"), std::string::npos);
        EXPECT_NE(records[0].function.find("findBoundaryNew"), std::string::npos);
        EXPECT_GT(records[0].line, 0);
        EXPECT_FALSE(screen.hasValidBoundary());
    }
}

TEST(MeshScreenLog, OutlineThatLeavesATriangleWithNaNIsWarnedOf) {
    const Mesh mesh = withoutUV({wholeTriangle({2.0, 0.0, 1.0}, {1.0, 0.0, 1.0}, {0.0, 0.0, 0.0}),
                                 wholeTriangle({2.0, 0.0, 1.0}, {1.0, std::nan(""), 0.0}, {0.0, 0.0, 1.0})});
    TriangleScreen screen;
    const auto records = recordsOf([&] { screen.load(mesh); });
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].message, edgesLeft(3));
    EXPECT_EQ(screen.outline().points.size(), 4U);
    EXPECT_FALSE(screen.hasValidBoundary());
}

TEST(MeshScreenLog, EachSearchForTheOutlineWarnsAgain) {
    const Mesh pieces = separatePieces(3, {1, 1});
    EXPECT_EQ(recordsOf([&] {
                  TriangleScreen screen(pieces);
                  screen.applyTransform({1.0, 0.0, 0.0}, {}, 1.0);
                  Boundary boundary;
                  EXPECT_FALSE(MeshScreen::findBoundaryNew(pieces, boundary));
                  EXPECT_EQ(boundary.points.size(), 5U);
              }).size(),
              3U);
    EXPECT_TRUE(recordsOf([&] { TriangleScreen screen(pieces); }, log4cxx::Level::getError()).empty());
}

TEST(MeshScreenLog, OneOutlineOrNoneIsNotWarnedOf) {
    for (const Mesh& mesh : {flatGrid({4, 3}), withoutUV(flatGrid({4, 3})), closedSurface(), Mesh()}) {
        TriangleScreen screen;
        EXPECT_TRUE(recordsOf([&] { screen.load(mesh); }).empty());
    }
    EXPECT_FALSE(TriangleScreen(withoutUV(flatGrid({4, 3}))).hasValidBoundary());
    EXPECT_FALSE(TriangleScreen(closedSurface()).hasValidBoundary());
}

TEST(MeshScreenLog, RayAndPositionQueriesLogNothing) {
    const TriangleScreen screen(dome({6, 5}));
    EXPECT_TRUE(recordsOf([&] {
                    for (const Point3& to : {Point3(0.0, 5.0, 0.0), Point3(0.0, -5.0, 0.0)}) {
                        (void)screen.intersect({}, to);
                        for (const int sign : {-1, 0, 1})
                            (void)screen.intersectExtrapolatedWithSpecifiedNormal({}, to, sign);
                        (void)screen.getScreenNormal(to);
                        (void)screen.isOnScreenSection(to);
                        (void)screen.getClosestPoint(to);
                        (void)screen.getPointOnMeshEdge(to);
                    }
                }).empty());
}

TEST(MeshScreenLog, ChangesAndViewsAreMadeInSilence) {
    TriangleScreen screen(wave({4, 3}));
    EXPECT_TRUE(recordsOf([&] {
                    screen.refine(0.4);
                    screen.applyTransform({1.0, 2.0, 3.0}, {10.0, 20.0, 30.0}, 2.0);
                    screen.applyParameterizationTransform(true, true);
                    Point3 viewPoint;
                    std::vector<int> indices;
                    std::vector<Point3> vertices;
                    std::vector<Point3> normals;
                    screen.generateGeometry(viewPoint, indices, vertices, normals);
                    (void)screen.getCenterOfScreenHeading();
                    (void)screen.getMaxAngleFromHeading();
                    IScreenGeometry::Polylines outline;
                    screen.sampleBoundary(outline);
                    screen.parameterized = false;
                    (void)screen.getDefaultCalibrationPoints(3, 3);
                }).empty());
}

TEST(MeshScreenLog, ErrorOfTheEmptyTreeIsNotLogged) {
    const TriangleScreen screen;
    EXPECT_TRUE(recordsOf([&] {
                    EXPECT_THROW((void)screen.getClosestPoint({}), ZelmoreException);
                    EXPECT_TRUE(sameBits(screen.getScreenNormal({}), Point3()));
                }).empty());
}
