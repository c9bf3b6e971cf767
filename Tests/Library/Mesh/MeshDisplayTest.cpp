#include <gtest/gtest.h>

#include <numeric>

#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleBits.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;
using Polylines = IScreenGeometry::Polylines;

namespace {

struct Display {
    Point3 viewPoint{7.0, 7.0, 7.0};
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;

    void add(const MeshScreen& screen) { screen.generateGeometry(viewPoint, indices, vertices, normals); }
};

}  // namespace

TEST(MeshDisplay, OfAnEmptyMeshSetsTheViewPointAlone) {
    Display display;
    display.add(TriangleScreen());
    EXPECT_EQ(display.viewPoint, Point3(0.0, -5.0, 0.0));
    EXPECT_TRUE(display.indices.empty());
    EXPECT_TRUE(display.vertices.empty());
    EXPECT_TRUE(display.normals.empty());
}

TEST(MeshDisplay, ListsAllCornersWithTheirOwnNormals) {
    Mesh mesh = wave({3, 2});
    mesh[1].vertices[2].normal = {1.0, 2.0, 3.0};
    const TriangleScreen screen(mesh);
    Display display;
    display.add(screen);
    ASSERT_EQ(display.vertices.size(), 3 * mesh.size());
    std::vector<int> expected(3 * mesh.size());
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(display.indices, expected);
    for (std::size_t i = 0; i < display.vertices.size(); ++i) {
        const TriangleVertex& corner = mesh[i / 3].vertices[i % 3];
        EXPECT_TRUE(sameBits(display.vertices[i], corner.position));
        EXPECT_TRUE(sameBits(display.normals[i], corner.normal));
    }
    EXPECT_EQ(display.normals.size(), display.vertices.size());
}

TEST(MeshDisplay, AppendsAndBeginsItsIndicesAtZeroAgain) {
    const TriangleScreen screen({wholeTriangle({}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0})});
    Display display;
    display.indices = {42};
    display.vertices = {Point3(4.0, 2.0, 0.0)};
    display.add(screen);
    display.add(screen);
    EXPECT_EQ(display.indices, (std::vector<int>{42, 0, 1, 2, 0, 1, 2}));
    EXPECT_EQ(display.vertices.size(), 7U);
    EXPECT_EQ(display.vertices.front(), Point3(4.0, 2.0, 0.0));
    EXPECT_EQ(display.normals.size(), 6U);
}

TEST(MeshTesselation, IsACopyOfTheTriangles) {
    Rng rng(1);
    const Mesh mesh = anyMesh(rng);
    const TriangleScreen screen(mesh);
    std::vector<Triangle> copy(3);
    screen.getTesselation(copy);
    EXPECT_TRUE(sameTriangles(copy, mesh));
}

TEST(MeshTesselation, HandedTheScreensOwnListLeavesIt) {
    const Mesh mesh = wave({2, 2});
    TriangleScreen screen(mesh);
    const Triangle* const place = screen.mesh().data();
    screen.getTesselation(screen.mesh());
    EXPECT_TRUE(sameTriangles(screen.mesh(), mesh));
    EXPECT_EQ(screen.mesh().data(), place);
}

TEST(MeshTesselation, ShowsStaleFieldsAsTheyAre) {
    TriangleScreen screen(wave({2, 2}));
    screen.refine(0.5);
    std::vector<Triangle> copy;
    screen.getTesselation(copy);
    EXPECT_TRUE(sameTriangles(copy, screen.mesh()));
    EXPECT_EQ(copy.front().normal, Point3());
}

TEST(MeshBoundaryView, ReplacesTheFirstPolylineAndLeavesTheOthers) {
    const TriangleScreen screen(flatGrid({2, 2}));
    const std::vector<Point3> other = {Point3(1.0, 2.0, 3.0)};
    Polylines lines;
    screen.sampleBoundary(lines);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0], screen.outline().points);
    EXPECT_EQ(lines[0].size(), 9U);

    lines = {other, other, {}};
    screen.sampleBoundary(lines);
    EXPECT_EQ(lines, (Polylines{screen.outline().points, other, {}}));
}

TEST(MeshBoundaryView, OfAMeshWithoutOutlineDoesNothing) {
    Polylines lines;
    TriangleScreen().sampleBoundary(lines);
    EXPECT_TRUE(lines.empty());
    lines = {{Point3(1.0, 2.0, 3.0)}};
    const Polylines before = lines;
    TriangleScreen().sampleBoundary(lines);
    EXPECT_EQ(lines, before);
}

TEST(MeshBoundaryView, InUVReplacesTheCallersListAndLeavesTheScreensOwn) {
    TriangleScreen screen(flatGrid({2, 2}));
    std::vector<Point2> outline(3);
    screen.sampleBoundaryUV(outline);
    EXPECT_EQ(outline, screen.outline().uvPoints);
    screen.sampleBoundaryUV(screen.outline().uvPoints);
    EXPECT_EQ(outline, screen.outline().uvPoints);
    TriangleScreen().sampleBoundaryUV(outline);
    EXPECT_TRUE(outline.empty());
}
