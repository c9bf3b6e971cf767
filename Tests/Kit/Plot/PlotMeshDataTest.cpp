#include <QuarnKit/Plot/Mesh/PlotMeshData.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <utility>

#include <QuarnScreen/FlatScreen.h>

#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

namespace quarn::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

PlotMeshData dataOf(Mesh mesh) {
    return buildPlotMeshData(TriangleScreen(std::move(mesh)));
}

TEST(PlotMeshData, PositionsAreCentredAndOfSizeOne) {
    Mesh mesh = flatGrid({4, 3}, {.width = 40.0, .height = 30.0});
    const PlotMeshData data = dataOf(mesh);
    ASSERT_TRUE(data.isDrawable());
    EXPECT_EQ(data.size, 40.0);
    double highest = -1.0;
    for (const TriangleCorners& triangle : data.triangles)
        for (const Point<double, 3>& corner : triangle) highest = std::max(highest, corner[0]);
    EXPECT_EQ(highest, 0.5);
    EXPECT_EQ(data.toScene({20.0, 0.0, 15.0}), (Point<double, 3>(0.5, 0.0, 0.375)));
}

TEST(PlotMeshData, BoundaryIsNoHoleAndAHoleIsNoBoundary) {
    const PlotMeshData data = dataOf(gridWithHoles({9, 3}, 2));
    EXPECT_THAT(data.boundaries, SizeIs(1));
    EXPECT_THAT(data.holes, SizeIs(2));
    EXPECT_EQ(data.counts.holes, 2U);
}

TEST(PlotMeshData, EachComponentHasABoundary) {
    const PlotMeshData data = dataOf(separatePieces(3, {2, 2}));
    EXPECT_THAT(data.boundaries, SizeIs(3));
    EXPECT_EQ(data.counts.components, 3U);
    EXPECT_EQ(data.counts.holes, 0U);
}

TEST(PlotMeshData, UvLinesRunAcrossTheSurface) {
    // Seven lines each way; the cells' edges lie beside all of them.
    EXPECT_THAT(dataOf(flatGrid({5, 3})).grid, SizeIs(14));
    // Here some lines run along edges, and are found once.
    EXPECT_THAT(dataOf(flatGrid({8, 16})).grid, SizeIs(14));
    for (const PlotMeshData::Line& line : dataOf(flatGrid({8, 8}, {.width = 1.0, .height = 1.0})).grid) {
        double distance = 0.0;
        for (std::size_t i = 1; i < line.size(); ++i) distance += length(line[i] - line[i - 1]);
        EXPECT_NEAR(distance, 1.0, 1e-12);
    }
}

TEST(PlotMeshData, UvLinesRunOnWhereTrianglesNearlyMeet) {
    Mesh mesh = flatGrid({20, 12}, {.width = 4.0, .height = 3.0});
    for (std::size_t i = 0; i < mesh.size(); ++i)
        for (TriangleVertex& corner : mesh[i].vertices)
            corner.position[0] += 1e-9 * static_cast<double>(i % 5);
    const PlotMeshData data = dataOf(mesh);
    EXPECT_EQ(data.counts.components, mesh.size());
    EXPECT_THAT(data.grid, SizeIs(14));
}

TEST(PlotMeshData, MirroredPatchIsMarkedAndAFlippedTriangleIsNot) {
    Mesh mesh = flatGrid({6, 4});
    std::swap(mesh[5].vertices[0], mesh[5].vertices[1]);
    // Two corners change their UVs alone.
    std::swap(mesh[9].vertices[0].uv, mesh[9].vertices[1].uv);
    const PlotMeshData data = dataOf(mesh);
    for (std::size_t i = 0; i < mesh.size(); ++i) {
        EXPECT_EQ(data.marks[i].isFlipped, i == 5);
        EXPECT_EQ(data.marks[i].isMirrored, i == 9);
        EXPECT_FALSE(data.marks[i].isOutside);
    }
    EXPECT_FALSE(data.isMapMirrored);
    EXPECT_EQ(data.counts.flipped, 1U);
    EXPECT_EQ(data.counts.mirrored, 1U);
}

TEST(PlotMeshData, MapThatIsMirroredAsAWholeIsReportedOnce) {
    Mesh mesh = flatGrid({6, 4});
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices) corner.uv[0] = 1.0 - corner.uv[0];
    const PlotMeshData data = dataOf(mesh);
    EXPECT_TRUE(data.isMapMirrored);
    EXPECT_EQ(data.counts.mirrored, 0U);
}

TEST(PlotMeshData, UvsOutsideAndMissingOnesAreCounted) {
    Mesh mesh = flatGrid({4, 1});
    mesh[0].vertices[0].uv = {-0.25, 0.0};
    mesh[7].vertices[1].uv = kNoUV;
    const PlotMeshData data = dataOf(mesh);
    EXPECT_TRUE(data.marks[0].isOutside);
    EXPECT_EQ(data.counts.outside, 1U);
    EXPECT_FALSE(data.marks[7].hasUV);
    EXPECT_EQ(data.counts.withoutUV, 1U);
    EXPECT_TRUE(data.hasUV());
    stripUV(mesh);
    EXPECT_FALSE(dataOf(mesh).hasUV());
    EXPECT_THAT(dataOf(mesh).grid, IsEmpty());
}

TEST(PlotMeshData, StretchOfAWallIsItsArea) {
    const PlotMeshData data = dataOf(flatGrid({4, 3}, {.width = 4.0, .height = 3.0}));
    for (const StretchPatch& patch : data.patches())
        EXPECT_NEAR(patch.area * data.size * data.size / patch.uvArea, 12.0, 1e-12);
}

TEST(PlotMeshData, ScreenWithoutTrianglesIsNotDrawable) {
    EXPECT_FALSE(buildPlotMeshData(FlatScreen(4.0, 3.0)).isDrawable());
    Mesh point = flatGrid({1, 1});
    scale(point, 0.0);
    EXPECT_FALSE(dataOf(point).isDrawable());
}

}  // namespace
}  // namespace quarn::test
