#include "Mesh/MeshSurface.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

#include "Support/Mesh/Meshes.h"

namespace quarn::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

void turnOver(Triangle& triangle) {
    std::swap(triangle.vertices[1], triangle.vertices[2]);
}

TEST(MeshSurface, PiecesBeginWithTheirFirstTriangle) {
    EXPECT_THAT(meshSurfaceOf(flatGrid({6, 4})).pieces, ElementsAre(0));
    EXPECT_THAT(meshSurfaceOf(separatePieces(3, {2, 2})).pieces, ElementsAre(0, 8, 16));
    EXPECT_THAT(meshSurfaceOf(gridWithSeam({4, 5})).pieces, ElementsAre(0)) << "UV does not count";
}

TEST(MeshSurface, TrianglesTurnedAgainstMostOfTheirPieceAreFound) {
    for (int i = 0; i < seedCount(100); ++i) {
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
        ASSERT_EQ(meshSurfaceOf(mesh).isTurned, expected);
    }
}

TEST(MeshSurface, WhereMostOfAPieceIsTurnedTheOthersAre) {
    Mesh mesh = flatGrid({4, 4});
    for (std::size_t i = 1; i < mesh.size(); ++i) turnOver(mesh[i]);
    const std::vector<bool> turned = meshSurfaceOf(mesh).isTurned;
    EXPECT_TRUE(turned[0]);
    EXPECT_EQ(std::count(turned.begin(), turned.end(), true), 1);
}

TEST(MeshSurface, ATriangleWithTwoEqualCornersIsNoPiece) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const MeshSurface surface = meshSurfaceOf({wholeTriangle(a, a, b), wholeTriangle(a, b, {0.0, 1.0, 0.0})});
    EXPECT_THAT(surface.pieces, ElementsAre(1));
    EXPECT_THAT(surface.isUsed, ElementsAre(false, true));
    EXPECT_THAT(surface.isDegenerate, ElementsAre(true, false));
}

TEST(MeshSurface, ADuplicateIsFoundInWhateverOrderItsCornersAre) {
    Mesh mesh = flatGrid({3, 3});
    Triangle copy = mesh[4];
    std::rotate(copy.vertices.begin(), copy.vertices.begin() + 1, copy.vertices.end());
    mesh.push_back(copy);
    turnOver(copy);
    mesh.push_back(copy);
    const MeshSurface surface = meshSurfaceOf(mesh);
    std::vector<bool> expected(mesh.size());
    expected[18] = expected[19] = true;
    EXPECT_EQ(surface.isDuplicate, expected);
    EXPECT_THAT(surface.crowded, IsEmpty()) << "it has no edges";
    EXPECT_THAT(surface.isTurned, Each(false));
}

TEST(MeshSurface, AnEdgeOfThreeTrianglesJoinsThemButTellsNoWayRound) {
    const Point<double, 3> a(0.0, 0.0, 0.0);
    const Point<double, 3> b(1.0, 0.0, 0.0);
    const MeshSurface surface =
        meshSurfaceOf({wholeTriangle(a, b, {0.0, 1.0, 0.0}), wholeTriangle(a, b, {0.0, 0.0, 1.0}),
                       wholeTriangle(a, b, {0.0, -1.0, 0.0})});
    EXPECT_THAT(surface.pieces, ElementsAre(0));
    EXPECT_THAT(surface.crowded, ElementsAre(2));
    EXPECT_THAT(surface.sheets, ElementsAre(0, 1, 2));
    EXPECT_THAT(surface.isTurned, Each(false));
}

TEST(MeshSurface, NoTrianglesAreNothing) {
    EXPECT_THAT(meshSurfaceOf({}).pieces, IsEmpty());
}

}  // namespace
}  // namespace quarn::test
