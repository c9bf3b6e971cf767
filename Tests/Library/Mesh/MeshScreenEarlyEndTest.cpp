#include <gtest/gtest.h>

#include <cmath>

#include "Reference/Mesh/ReferenceMesh.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

// A search checks at its first rejected triangle whether the position is on the screen at all, and
// may end there.

using namespace quarn::test;

namespace {

const Point3 kZero;

// A 4 x 4 grid whose inner corners have no UV: they do not count for the boundary, which stays
// valid.
Mesh gridWithoutInnerUV() {
    Mesh mesh = flatGrid({4, 4});
    for (Triangle& triangle : mesh) {
        for (TriangleVertex& vertex : triangle.vertices) {
            const bool isInner =
                0.0 < vertex.uv[0] && vertex.uv[0] < 1.0 && 0.0 < vertex.uv[1] && vertex.uv[1] < 1.0;
            if (isInner) vertex.uv = kNoUV;
        }
        computeFields(triangle);
    }
    return mesh;
}

// How many of a mesh's triangles the screen finds at their own centroids.
int foundCentroids(const TriangleScreen& screen) {
    int found = 0;
    for (const Triangle& triangle : screen.mesh())
        found += screen.isOnScreenSection(triangle.centroid) ? 1 : 0;
    return found;
}

}  // namespace

TEST(MeshScreenEarlyEnd, NeverComesWithoutAValidOutline) {
    Mesh mesh = gridWithoutInnerUV();
    EXPECT_LT(foundCentroids(TriangleScreen(mesh)), 32);
    stripUV(mesh);
    const TriangleScreen bare(mesh);
    ASSERT_FALSE(bare.hasValidBoundary());
    EXPECT_EQ(foundCentroids(bare), 32);
}

TEST(MeshScreenEarlyEnd, NeverComesOnAMeshWhoseCornersAreAllInItsOutline) {
    for (const Mesh& mesh : {flatGrid({5, 5}), dome({5, 5}), wave({5, 5}), foldedSheet(4, 0.1, 3)}) {
        const TriangleScreen screen(mesh);
        ASSERT_TRUE(screen.hasValidBoundary());
        EXPECT_EQ(foundCentroids(screen), static_cast<int>(mesh.size()));
    }
}

// The projection falls outside of the rejected triangle, so its corner 0 is what is looked at.
TEST(MeshScreenEarlyEnd, ComesAtACornerWithoutUV) {
    const TriangleScreen screen(gridWithoutInnerUV());
    ASSERT_TRUE(screen.hasValidBoundary());
    const ReferenceMesh withoutEnd(screen.mesh());
    const ReferenceMesh plain(screen.mesh(), screen.outline().uvPoints, true);
    int denied = 0;
    for (const Triangle& triangle : screen.mesh()) {
        const ReferenceMesh::Search search = plain.searchHolding(triangle.centroid);
        ASSERT_EQ(withoutEnd.searchHolding(triangle.centroid).triangle, &triangle);
        EXPECT_EQ(screen.isOnScreenSection(triangle.centroid), !search.isEnded);
        if (!search.isEnded) continue;
        ++denied;
        EXPECT_TRUE(sameBits(*search.firstRejectedUV, kNoUV));
    }
    EXPECT_GT(denied, 0);
    EXPECT_LT(denied, 32);
}

// The projection falls into the rejected triangle, but the position is off its plane: its UV there
// is what is looked at.
TEST(MeshScreenEarlyEnd, ComesAtTheUVOfAFootOutsideOfTheOutline) {
    const Mesh folded = foldedSheet(2, 1.0, 1, {2.0, 2.0});
    const TriangleScreen whole(folded);
    int denied = 0;
    for (const double y : {0.0, 1.0}) {
        for (std::size_t i = 0; i < folded.size(); ++i) {
            Mesh mesh = folded;
            mesh[i].uvEdge1 = {1000.0, 1000.0};
            mesh[i].uvEdge2 = {1000.0, 1000.0};
            const TriangleScreen screen(mesh);
            ASSERT_TRUE(screen.hasValidBoundary());
            const ReferenceMesh plain(screen.mesh(), screen.outline().uvPoints, true);
            for (const double x : {-0.8, -0.3, 0.4, 0.9}) {
                const Point3 point(x, y, 0.2);
                ASSERT_TRUE(whole.isOnScreenSection(point));
                const ReferenceMesh::Search search = plain.searchHolding(point);
                EXPECT_EQ(screen.isOnScreenSection(point), !search.isEnded);
                if (!search.isEnded) continue;
                EXPECT_GT((*search.firstRejectedUV)[0], 1.0);
                ++denied;
            }
        }
    }
    EXPECT_GT(denied, 0);
}

TEST(MeshScreenEarlyEnd, ComesAtAUVThatIsNoNumber) {
    Mesh mesh = foldedSheet(2, 1.0, 1, {2.0, 2.0});
    for (Triangle& triangle : mesh) triangle.uvEdge1 = {std::nan(""), 0.0};
    const TriangleScreen screen(mesh);
    ASSERT_TRUE(screen.hasValidBoundary());
    EXPECT_TRUE(sameBits(screen.getScreenNormal({0.3, 1.0, 0.2}), kZero));
}

TEST(MeshScreenEarlyEnd, HasNoSayInTheClosestPoint) {
    const TriangleScreen screen(gridWithoutInnerUV());
    for (const Triangle& triangle : screen.mesh())
        EXPECT_LT(length(screen.getClosestPoint(triangle.centroid) - triangle.centroid), 1e-12);
}
