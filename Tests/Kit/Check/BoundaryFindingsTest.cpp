#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Kit/Check/CheckCases.h"

using namespace quarn;
using namespace quarn::test;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

// A grid without the cells of a list, as 1 + column + row * columns.
Mesh gridWithout(const GridSize& size, const std::vector<std::pair<int, int>>& cells) {
    const Mesh grid = flatGrid(size, {static_cast<double>(size.columns), static_cast<double>(size.rows)});
    std::vector<bool> isGone(grid.size());
    for (const auto& [column, row] : cells)
        for (const int half : {0, 1})
            isGone[static_cast<std::size_t>(2 * (row * size.columns + column) + half)] = true;
    Mesh mesh;
    for (std::size_t i = 0; i < grid.size(); ++i)
        if (!isGone[i]) mesh.push_back(grid[i]);
    return mesh;
}

}  // namespace

TEST(BoundaryCheck, HolesAreCountedWithTheLongestOne) {
    const auto findings = check(gridWithout({10, 10}, {{2, 2}, {5, 5}, {6, 5}, {5, 6}, {6, 6}, {8, 2}}));
    ASSERT_THAT(namesOf(findings), ElementsAre("hole"));
    EXPECT_EQ(findings[0].count, 3U);
    EXPECT_THAT(findings[0].text, HasSubstr("3 holes, the longest with 8 edges and 8 m around"));
}

TEST(BoundaryCheck, HolesThatTouchInACornerAreTwo) {
    EXPECT_EQ(findingNamed("hole", check(gridWithout({6, 6}, {{2, 2}, {3, 3}}))).count, 2U);
}

TEST(BoundaryCheck, TrianglesNextToAHoleAreReported) {
    const Mesh mesh = gridWithout({6, 6}, {{3, 2}});
    const Finding finding = findingNamed("hole", check(mesh));
    ASSERT_EQ(finding.places.size(), 1U);
    const Triangle& beside = mesh.at(static_cast<std::size_t>(finding.places[0].triangle) - 1);
    // The hole is the cell from (0, 0.5) to (1, 1), seen in the plane.
    int onBoundary = 0;
    for (const TriangleVertex& corner : beside.vertices)
        onBoundary += corner.position[0] >= 0.0 && corner.position[0] <= 1.0 && corner.position[2] >= 0.0 &&
                              corner.position[2] <= 1.0
                          ? 1
                          : 0;
    EXPECT_EQ(onBoundary, 2);
}

TEST(BoundaryCheck, NotchInTheBoundaryIsNoHole) {
    EXPECT_THAT(namesOf(check(gridWithout({6, 6}, {{0, 2}, {3, 0}, {5, 5}}))), IsEmpty());
}

TEST(BoundaryCheck, RandomSingleHolesAreCounted) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<std::pair<int, int>> cells;
        // Every other cell, so that none touches another one or the boundary.
        for (int row = 1; row < 14; row += 2)
            for (int column = 1; column < 14; column += 2)
                if (rng.coin()) cells.emplace_back(column, row);
        Mesh mesh = gridWithout({15, 15}, cells);
        shuffle(mesh, i);
        EXPECT_EQ(findingNamed("hole", check(mesh)).count, cells.size());
    }
}

TEST(BoundaryCheck, WholeCylinderHasOneBoundaryAlongItsSeam) {
    Mesh mesh = cylinderSection({40, 10}, 5.0, 3.0, 6.283185307179586);
    // The right end gets the very positions of the left one.
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices)
            if (corner.uv[0] == 1.0 || corner.uv[0] == 0.0) {
                corner.position[0] = 0.0;
                corner.position[1] = -5.0;
            }
    computeFields(mesh);
    EXPECT_THAT(namesOf(check(mesh)), IsEmpty());
    // Without UVs there is no seam, and two boundary loops are left.
    stripUV(mesh);
    EXPECT_EQ(findingNamed("hole", check(mesh)).count, 1U);
}

TEST(BoundaryCheck, SeamThatPartsTheUvMapIsFound) {
    Mesh mesh = gridWithSeam({10, 4});
    const auto findings = check(mesh);
    ASSERT_THAT(namesOf(findings), Contains("uv-islands"));
    EXPECT_EQ(findingNamed("uv-islands", findings).count, 2U);
    EXPECT_EQ(findingNamed("disconnected-components", findings).count, 0U);
}
