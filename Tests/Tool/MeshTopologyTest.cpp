#include "MeshTopology.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

#include "Support/Meshes.h"

namespace quarn::test {
namespace {

using ::testing::Each;
using ::testing::IsEmpty;
using ::testing::SizeIs;

MeshTopology topologyOfMesh(const Mesh& mesh) {
    std::vector<TriangleCorners> triangles;
    std::vector<TriangleUVs> uvs;
    for (const Triangle& triangle : mesh) {
        const auto& [a, b, c] = triangle.vertices;
        triangles.push_back({a.position, b.position, c.position});
        uvs.push_back({a.uv, b.uv, c.uv});
    }
    return topologyOf(triangles, uvs);
}

void turnOver(Triangle& triangle) {
    std::swap(triangle.vertices[1], triangle.vertices[2]);
}

TEST(MeshTopology, ASheetHasOneLoopAroundIt) {
    const MeshTopology topology = topologyOfMesh(flatGrid({6, 4}));
    EXPECT_EQ(topology.pieces, 1U);
    ASSERT_THAT(topology.loops, SizeIs(1));
    EXPECT_THAT(topology.loops[0].edges, SizeIs(2 * (6 + 4)));
    EXPECT_EQ(topology.loops[0].points.front(), topology.loops[0].points.back());
    EXPECT_THAT(topology.isTurned, Each(false));
    EXPECT_THAT(topology.seams, IsEmpty());
}

TEST(MeshTopology, EachHoleHasALoop) {
    EXPECT_THAT(topologyOfMesh(gridWithHoles({9, 3}, 3)).loops, SizeIs(1 + 3));
}

TEST(MeshTopology, PiecesAreCountedAndTheirLoopsBelongToThem) {
    const MeshTopology topology = topologyOfMesh(separatePieces(3, {2, 2}));
    EXPECT_EQ(topology.pieces, 3U);
    ASSERT_THAT(topology.loops, SizeIs(3));
    for (std::uint32_t i = 0; i < 3; ++i) EXPECT_EQ(topology.loops[i].piece, i);
}

TEST(MeshTopology, TrianglesTurnedAgainstMostOfTheirPieceAreFound) {
    for (int i = 0; i < 100; ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = separatePieces(2, {6, 5});
        std::vector<bool> expected(mesh.size());
        for (int k = 0; k < 12; ++k) {
            const auto turned = static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1));
            if (expected[turned]) continue;
            expected[turned] = true;
            turnOver(mesh[turned]);
        }
        ASSERT_EQ(topologyOfMesh(mesh).isTurned, expected);
    }
}

TEST(MeshTopology, WhereMostOfAPieceIsTurnedTheOthersAre) {
    Mesh mesh = flatGrid({4, 4});
    for (std::size_t i = 1; i < mesh.size(); ++i) turnOver(mesh[i]);
    const std::vector<bool> turned = topologyOfMesh(mesh).isTurned;
    EXPECT_TRUE(turned[0]);
    EXPECT_EQ(std::count(turned.begin(), turned.end(), true), 1);
}

TEST(MeshTopology, AJumpInUvIsASeamAndNoEdgeOfThePiece) {
    const MeshTopology topology = topologyOfMesh(gridWithSeam({4, 5}));
    EXPECT_THAT(topology.seams, SizeIs(2 * 5));
    EXPECT_EQ(topology.pieces, 1U);
    EXPECT_THAT(topology.loops, SizeIs(1));
}

TEST(MeshTopology, APoleIsNeitherAnEdgeNorASeam) {
    const MeshTopology topology = topologyOfMesh(dome({16, 4}, kHalfSphere));
    for (const std::uint32_t edge : topology.seams) EXPECT_NE(edge / 6 % 16, 7U) << "a seam far from u = 0";
    for (const EdgeLoop& loop : topology.loops)
        EXPECT_EQ(loop.points.front(), loop.points.back()) << "loops close";
}

TEST(MeshTopology, ATriangleWithTwoEqualCornersIsNoPiece) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const Point<double, 3> c(0.0, 1.0, 0.0);
    const MeshTopology topology = topologyOf({{a, b, c}, {a, a, b}}, {});
    EXPECT_EQ(topology.pieces, 1U);
    ASSERT_THAT(topology.loops, SizeIs(1));
    EXPECT_THAT(topology.loops[0].edges, SizeIs(3));
}

TEST(MeshTopology, AnEdgeOfThreeTrianglesJoinsNothing) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const MeshTopology topology = topologyOf({{a, b, Point<double, 3>(0.0, 1.0, 0.0)},
                                              {a, b, Point<double, 3>(0.0, 0.0, 1.0)},
                                              {a, b, Point<double, 3>(0.0, -1.0, 0.0)}},
                                             {});
    EXPECT_EQ(topology.pieces, 3U);
    EXPECT_THAT(topology.isTurned, Each(false));
}

TEST(MeshTopology, NoTrianglesAreNothing) {
    const MeshTopology topology = topologyOf({}, {});
    EXPECT_EQ(topology.pieces, 0U);
    EXPECT_THAT(topology.loops, IsEmpty());
}

}  // namespace
}  // namespace quarn::test
