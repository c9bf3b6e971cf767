#include <QuarnKit/Mesh/MeshTopology.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

#include "Support/Mesh/Meshes.h"

namespace quarn::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

void flipWinding(Triangle& triangle) {
    std::swap(triangle.vertices[1], triangle.vertices[2]);
}

TEST(MeshTopology, ComponentsBeginWithTheirFirstTriangle) {
    EXPECT_THAT(buildMeshTopology(flatGrid({6, 4})).components, ElementsAre(0));
    EXPECT_THAT(buildMeshTopology(separatePieces(3, {2, 2})).components, ElementsAre(0, 8, 16));
    EXPECT_THAT(buildMeshTopology(gridWithSeam({4, 5})).components, ElementsAre(0)) << "UV does not count";
    const std::vector<std::uint32_t> componentOf = buildMeshTopology(separatePieces(3, {2, 2})).componentOf;
    ASSERT_EQ(componentOf.size(), 24U);
    for (std::size_t i = 0; i < componentOf.size(); ++i) EXPECT_EQ(componentOf[i], i / 8) << i;
}

TEST(MeshTopology, TrianglesFlippedAgainstMostOfTheirPatchAreFound) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = separatePieces(2, {6, 5});
        std::vector<bool> expected(mesh.size());
        for (int k = 0; k < 12; ++k) {
            const auto flipped = static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1));
            if (expected[flipped]) continue;
            expected[flipped] = true;
            flipWinding(mesh[flipped]);
        }
        ASSERT_EQ(buildMeshTopology(mesh).isFlipped, expected);
    }
}

TEST(MeshTopology, MinorityOfAPatchIsFlipped) {
    Mesh mesh = flatGrid({4, 4});
    for (std::size_t i = 1; i < mesh.size(); ++i) flipWinding(mesh[i]);
    const std::vector<bool> flipped = buildMeshTopology(mesh).isFlipped;
    EXPECT_TRUE(flipped[0]);
    EXPECT_EQ(std::count(flipped.begin(), flipped.end(), true), 1);
}

TEST(MeshTopology, TriangleWithTwoEqualCornersIsNoPiece) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const MeshTopology topology =
        buildMeshTopology({wholeTriangle(a, a, b), wholeTriangle(a, b, {0.0, 1.0, 0.0})});
    EXPECT_THAT(topology.components, ElementsAre(1));
    EXPECT_THAT(topology.isUsed, ElementsAre(false, true));
    EXPECT_THAT(topology.isDegenerate, ElementsAre(true, false));
}

TEST(MeshTopology, DuplicateIsFoundInWhateverOrderItsCornersAre) {
    Mesh mesh = flatGrid({3, 3});
    Triangle copy = mesh[4];
    std::rotate(copy.vertices.begin(), copy.vertices.begin() + 1, copy.vertices.end());
    mesh.push_back(copy);
    flipWinding(copy);
    mesh.push_back(copy);
    const MeshTopology topology = buildMeshTopology(mesh);
    std::vector<bool> expected(mesh.size());
    expected[18] = expected[19] = true;
    EXPECT_EQ(topology.isDuplicate, expected);
    EXPECT_THAT(topology.nonManifold, IsEmpty()) << "it has no edges";
    EXPECT_THAT(topology.isFlipped, Each(false));
}

TEST(MeshTopology, EdgeOfThreeTrianglesConnectsThemWithoutAnOrientation) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const MeshTopology topology =
        buildMeshTopology({wholeTriangle(a, b, {0.0, 1.0, 0.0}), wholeTriangle(a, b, {0.0, 0.0, 1.0}),
                           wholeTriangle(a, b, {0.0, -1.0, 0.0})});
    EXPECT_THAT(topology.components, ElementsAre(0));
    EXPECT_THAT(topology.nonManifold, ElementsAre(2));
    EXPECT_THAT(topology.patches, ElementsAre(0, 1, 2));
    EXPECT_THAT(topology.isFlipped, Each(false));
}

TEST(MeshTopology, NoTrianglesAreNothing) {
    EXPECT_THAT(buildMeshTopology({}).components, IsEmpty());
}

}  // namespace
}  // namespace quarn::test
