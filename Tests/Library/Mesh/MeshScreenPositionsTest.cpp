#include <gtest/gtest.h>

#include "Reference/Mesh/ReferenceBoundary.h"
#include "Reference/Mesh/ReferenceMesh.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

struct Tally {
    int onScreen = 0;
    int offScreen = 0;
    int closest = 0;
    int ended = 0;   // by the first rejected triangle
    int denied = 0;  // positions on a triangle for which the search was ended
};

// Compares a screen with the reference implementation at positions all over a mesh.
void compare(const Mesh& mesh, Rng& rng, int questions, Tally& tally) {
    const TriangleScreen screen(mesh);
    const ReferenceBoundary outline(screen.mesh());
    const ReferenceMesh plain(screen.mesh(), outline.boundary.uvPoints, outline.isSingleWithUV);
    ASSERT_EQ(screen.hasValidBoundary(), outline.isSingleWithUV);
    for (int i = 0; i < questions; ++i) {
        const Point3 point = anyQuestion(mesh, rng);
        SCOPED_TRACE(::testing::Message()
                     << std::hexfloat << point[0] << ", " << point[1] << ", " << point[2]);
        ASSERT_TRUE(sameBits(screen.getScreenNormal(point), plain.getScreenNormal(point)));
        ASSERT_EQ(screen.isOnScreenSection(point), plain.isOnScreenSection(point));
        const Point3 closest = plain.getClosestPoint(point);
        ASSERT_TRUE(sameBits(screen.getClosestPoint(point), closest));

        const ReferenceMesh::Search search = plain.searchHolding(point);
        ++(search.triangle == nullptr ? tally.offScreen : tally.onScreen);
        if (closest != Point3()) ++tally.closest;
        if (!search.isEnded) continue;
        ++tally.ended;
        if (ReferenceMesh(screen.mesh()).searchHolding(point).triangle != nullptr) ++tally.denied;
    }
}

// Takes the UV from all corners inside of a grid, or spoils what triangles store of it. The
// boundary stays.
void spoilUV(Mesh& mesh, Rng& rng) {
    const bool isInnerLost = rng.coin();
    for (Triangle& triangle : mesh) {
        for (TriangleVertex& vertex : triangle.vertices) {
            const bool isInner =
                0.0 < vertex.uv[0] && vertex.uv[0] < 1.0 && 0.0 < vertex.uv[1] && vertex.uv[1] < 1.0;
            if (isInner && isInnerLost) vertex.uv = kNoUV;
        }
        triangle.computeGeometry();
        if (rng.coin()) triangle.uvEdge1 = triangle.uvEdge1 * rng.spread(-4, 6);
        if (rng.integer(0, 9) == 0) triangle.uvEdge2[0] = std::nan("");
    }
}

Mesh meshWithOneOutline(Rng& rng) {
    const GridSize size = {rng.integer(1, 6), rng.integer(1, 6)};
    switch (rng.integer(0, 3)) {
        case 0:
            return flatGrid(size);
        case 1:
            return foldedSheet(size.columns, rng.coin() ? 1e-4 : 0.2, size.rows);
        case 2:
            return dome(size);
        default:
            return wave(size);
    }
}

}  // namespace

TEST(MeshScreenPositions, AnswersAreThoseOfTheReferenceOnMeshesOfAnyShape) {
    Tally tally;
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        compare(anyShape(rng), rng, 60, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.onScreen, seedCount(7'000));
    EXPECT_GT(tally.offScreen, seedCount(7'000));
    EXPECT_GT(tally.closest, seedCount(5'000));
}

TEST(MeshScreenPositions, AnswersAreThoseOfTheReferenceOnSpoiledMeshes) {
    Tally tally;
    for (int i = 0; i < seedCount(800); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        compare(anyMesh(rng), rng, 40, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.onScreen, seedCount(8'000));
    EXPECT_GT(tally.offScreen, seedCount(8'000));
    EXPECT_GT(tally.ended, 100);
    EXPECT_GT(tally.denied, 10);
}

TEST(MeshScreenPositions, AnswersAreThoseOfTheReferenceWhereTheFirstRejectedTriangleEndsTheSearch) {
    Tally tally;
    for (int i = 0; i < seedCount(600); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = meshWithOneOutline(rng);
        spoilUV(mesh, rng);
        if (rng.coin()) shuffle(mesh, i);
        compare(mesh, rng, 60, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.ended, seedCount(5'000));
    EXPECT_GT(tally.denied, seedCount(2'000));
    EXPECT_GT(tally.onScreen, 2'000);
}
