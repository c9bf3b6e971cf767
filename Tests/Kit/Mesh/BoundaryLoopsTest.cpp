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

std::size_t holesIn(const MeshBoundary& outline) {
    return static_cast<std::size_t>(
        std::count_if(outline.rims.begin(), outline.rims.end(), [](const BoundaryLoop& rim) { return rim.isHole; }));
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

TEST(Outline, ASheetHasOneRim) {
    const MeshBoundary outline = boundaryOfMesh(flatGrid({6, 4}, {.width = 6.0, .height = 4.0}));
    ASSERT_THAT(outline.rims, SizeIs(1));
    EXPECT_THAT(outline.rims[0].edges, SizeIs(2 * (6 + 4)));
    EXPECT_DOUBLE_EQ(outline.rims[0].length, 20.0);
    EXPECT_FALSE(outline.rims[0].isHole);
}

TEST(Outline, EachIslandHasAnOutlineAndEachFurtherRimIsAHole) {
    const MeshBoundary outline = boundaryOfMesh(gridWithHoles({9, 3}, 3));
    EXPECT_THAT(outline.rims, SizeIs(4));
    EXPECT_EQ(holesIn(outline), 3U);
    EXPECT_EQ(holesIn(boundaryOfMesh(separatePieces(3, {2, 2}))), 0U);
}

TEST(Outline, AnOpenCylinderHasOneRimAlongItsSeamAndTwoWithoutUv) {
    const MeshBoundary withSeam = boundaryOfMesh(openCylinder({24, 3}, true));
    ASSERT_THAT(withSeam.rims, SizeIs(1));
    EXPECT_THAT(withSeam.rims[0].edges, SizeIs(2 * (24 + 3)));
    const MeshBoundary without = boundaryOfMesh(openCylinder({24, 3}, false));
    EXPECT_THAT(without.rims, SizeIs(2));
    EXPECT_EQ(holesIn(without), 1U);
}

TEST(Outline, APatchThatIsAnIslandOfTheMapIsNoHole) {
    constexpr int kColumns = 6;
    Mesh mesh = flatGrid({kColumns, 5});
    for (int column = 2; column < 4; ++column)
        for (const int half : {0, 1})
            for (TriangleVertex& corner :
                 mesh[static_cast<std::size_t>(2 * (2 * kColumns + column) + half)].vertices)
                corner.uv[0] = 1.0 - corner.uv[0] + 2.0;
    const MeshBoundary outline = boundaryOfMesh(mesh);
    EXPECT_THAT(outline.islands, SizeIs(2));
    EXPECT_THAT(outline.rims, SizeIs(3));
    EXPECT_EQ(holesIn(outline), 0U);
    // A triangle of the patch less, and both have the hole in their rim: the patch as its outline.
    mesh.erase(mesh.begin() + 2 * (2 * kColumns + 2));
    EXPECT_EQ(holesIn(boundaryOfMesh(mesh)), 1U);
}

TEST(Outline, AClosedMeshWithoutUvHasNoRim) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const Point<double, 3> c(0.0, 1.0, 0.0);
    const Point<double, 3> d(0.0, 0.0, 1.0);
    Mesh mesh = {wholeTriangle(a, c, b), wholeTriangle(a, b, d), wholeTriangle(b, c, d),
                 wholeTriangle(c, a, d)};
    stripUV(mesh);
    const MeshBoundary outline = boundaryOfMesh(mesh);
    EXPECT_THAT(outline.rims, IsEmpty());
    EXPECT_THAT(outline.islands, SizeIs(1));
}

}  // namespace
}  // namespace quarn::test
