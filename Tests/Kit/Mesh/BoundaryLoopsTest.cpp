#include <QuarnKit/Mesh/BoundaryLoops.h>

#include <gmock/gmock.h>

#include <algorithm>

#include "Support/Mesh/Meshes.h"

namespace quarn::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

MeshBoundary boundaryOfMesh(const Mesh& mesh) {
    return findMeshBoundary(mesh, buildMeshTopology(mesh));
}

std::size_t holesIn(const MeshBoundary& boundary) {
    return static_cast<std::size_t>(std::count_if(boundary.loops.begin(), boundary.loops.end(),
                                                  [](const BoundaryLoop& loop) { return loop.isHole; }));
}

// Both ends at x = 0 behind the viewer, with the same positions.
Mesh openCylinder(const GridSize& size, bool hasUV) {
    Mesh mesh = cylinderSection(size, 5.0, 3.0, 6.283185307179586);
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices)
            if (corner.uv[0] == 0.0 || corner.uv[0] == 1.0) corner.position = {0.0, -5.0, corner.position[2]};
    computeFields(mesh);
    if (!hasUV) stripUV(mesh);
    return mesh;
}

TEST(BoundaryLoops, SheetHasOneBoundaryLoop) {
    const MeshBoundary boundary = boundaryOfMesh(flatGrid({6, 4}, {.width = 6.0, .height = 4.0}));
    ASSERT_THAT(boundary.loops, SizeIs(1));
    EXPECT_THAT(boundary.loops[0].edges, SizeIs(2 * (6 + 4)));
    EXPECT_DOUBLE_EQ(boundary.loops[0].length, 20.0);
    EXPECT_FALSE(boundary.loops[0].isHole);
}

TEST(BoundaryLoops, EachIslandHasAnOuterBoundaryAndFurtherLoopsAreHoles) {
    const MeshBoundary boundary = boundaryOfMesh(gridWithHoles({9, 3}, 3));
    EXPECT_THAT(boundary.loops, SizeIs(4));
    EXPECT_EQ(holesIn(boundary), 3U);
    EXPECT_EQ(holesIn(boundaryOfMesh(separatePieces(3, {2, 2}))), 0U);
}

TEST(BoundaryLoops, OpenCylinderHasOneLoopAlongItsSeamAndTwoWithoutUv) {
    const MeshBoundary withSeam = boundaryOfMesh(openCylinder({24, 3}, true));
    ASSERT_THAT(withSeam.loops, SizeIs(1));
    EXPECT_THAT(withSeam.loops[0].edges, SizeIs(2 * (24 + 3)));
    const MeshBoundary without = boundaryOfMesh(openCylinder({24, 3}, false));
    EXPECT_THAT(without.loops, SizeIs(2));
    EXPECT_EQ(holesIn(without), 1U);
}

TEST(BoundaryLoops, PatchThatIsAnIslandOfTheMapIsNoHole) {
    constexpr int kColumns = 6;
    Mesh mesh = flatGrid({kColumns, 5});
    for (int column = 2; column < 4; ++column)
        for (const int half : {0, 1})
            for (TriangleVertex& corner :
                 mesh[static_cast<std::size_t>(2 * (2 * kColumns + column) + half)].vertices)
                corner.uv[0] = 1.0 - corner.uv[0] + 2.0;
    const MeshBoundary boundary = boundaryOfMesh(mesh);
    EXPECT_THAT(boundary.islands, SizeIs(2));
    EXPECT_THAT(boundary.loops, SizeIs(3));
    EXPECT_EQ(holesIn(boundary), 0U);
    // A triangle of the patch less, and both have the hole in their loop: the patch as its
    // boundary.
    mesh.erase(mesh.begin() + 2 * (2 * kColumns + 2));
    EXPECT_EQ(holesIn(boundaryOfMesh(mesh)), 1U);
}

TEST(BoundaryLoops, ClosedMeshWithoutUvHasNoBoundary) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const Point<double, 3> c(0.0, 1.0, 0.0);
    const Point<double, 3> d(0.0, 0.0, 1.0);
    Mesh mesh = {wholeTriangle(a, c, b), wholeTriangle(a, b, d), wholeTriangle(b, c, d),
                 wholeTriangle(c, a, d)};
    stripUV(mesh);
    const MeshBoundary boundary = boundaryOfMesh(mesh);
    EXPECT_THAT(boundary.loops, IsEmpty());
    EXPECT_THAT(boundary.islands, SizeIs(1));
}

}  // namespace
}  // namespace quarn::test
