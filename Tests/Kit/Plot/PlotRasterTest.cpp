#include <QuarnKit/Plot/Mesh/PlotRaster.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

// In the plane y = depth, larger than the square from (0, 0) to (1, 1).
TriangleCorners largeTriangle(double depth) {
    return {Point<double, 3>(0.0, depth, 0.0), Point<double, 3>(2.0, depth, 0.0),
            Point<double, 3>(0.0, depth, 2.0)};
}

TEST(PlotRaster, NearestTriangleIsSeen) {
    const PlotRaster raster({largeTriangle(1.0), largeTriangle(-1.0), largeTriangle(0.0)}, Camera::front(),
                            20);
    ASSERT_TRUE(raster.triangleAt(3, 3));
    EXPECT_EQ(*raster.triangleAt(3, 3), 1U);
    EXPECT_FALSE(raster.triangleAt(19, 19));
}

TEST(PlotRaster, WhatLiesBehindIsHiddenAndWhatLiesOnTheSurfaceIsNot) {
    const PlotRaster raster({largeTriangle(0.0)}, Camera::front(), 100);
    EXPECT_TRUE(raster.hides({0.5, 0.5, 0.5}));
    EXPECT_FALSE(raster.hides({0.5, 0.0, 0.5}));
    EXPECT_FALSE(raster.hides({0.5, -0.5, 0.5}));
    EXPECT_FALSE(raster.hides({1.9, 0.5, 1.9})) << "beside the triangle";
    EXPECT_FALSE(raster.hides({-500.0, 0.5, 1e12}));
}

TEST(PlotRaster, PerspectiveHidesWhatARayReachesLater) {
    // Points of a tilted triangle, moved along their ray from the camera.
    const TriangleCorners triangle = {Point<double, 3>(-0.5, -0.3, -0.4), Point<double, 3>(0.5, 0.3, -0.4),
                                      Point<double, 3>(0.0, 0.2, 0.5)};
    const Camera camera = Camera::perspective(0.0);
    const PlotRaster raster({triangle}, camera, 300);
    const Point<double, 3> backwards = normalized(Point<double, 3>(0.62, -1.0, 0.62));
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double a = rng.uniform(0.2, 0.4);
        const double b = rng.uniform(0.2, 0.4);
        const Point<double, 3> point = triangle[0] * a + triangle[1] * b + triangle[2] * (1.0 - a - b);
        ASSERT_FALSE(raster.hides(point));
        ASSERT_FALSE(raster.hides(point + backwards * 0.05));
        ASSERT_TRUE(raster.hides(point - backwards * 0.05));
    }
}

TEST(PlotRaster, NeighboursLeaveNoGap) {
    for (int i = 0; i < seedCount(50); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point<double, 3> middle(rng.uniform(0.2, 0.8), 0.0, rng.uniform(0.2, 0.8));
        const Point<double, 3> a(0.0, 0.0, 0.0);
        const Point<double, 3> b(1.0, 0.0, 0.0);
        const Point<double, 3> c(1.0, 0.0, 1.0);
        const Point<double, 3> d(0.0, 0.0, 1.0);
        const PlotRaster raster({{a, b, middle}, {b, c, middle}, {c, d, middle}, {d, a, middle}},
                                Camera::front(), 40);
        for (int row = 0; row < 40; ++row)
            for (int column = 0; column < 40; ++column) ASSERT_TRUE(raster.triangleAt(column, row));
    }
}

TEST(PlotRaster, WhatAViewSeesFromItsEdgeHidesNothing) {
    const PlotRaster raster({largeTriangle(0.0)}, Camera::plan(), 50);
    for (int column = 0; column < raster.columns(); ++column) EXPECT_FALSE(raster.triangleAt(column, 0));
    EXPECT_FALSE(raster.hides({0.5, 0.0, -5.0}));
    EXPECT_FALSE(PlotRaster({}, Camera::plan(), 50).hides({0.0, 0.0, 0.0}));
}

TEST(PlotRaster, OrderOfManyLayersDecidesNothing) {
    // So many layers that drawing each of them whole would take more than the limit.
    std::vector<TriangleCorners> layers;
    for (int i = 0; i < 2000; ++i) layers.push_back(largeTriangle(-0.001 * i));
    for (int turn = 0; turn < 2; ++turn) {
        const PlotRaster raster(layers, Camera::front(), 600);
        EXPECT_EQ(raster.leftOutCount(), 0U);
        ASSERT_TRUE(raster.triangleAt(3, 3));
        EXPECT_EQ(layers[*raster.triangleAt(3, 3)], largeTriangle(-1.999));
        std::reverse(layers.begin(), layers.end());
    }
}

// Corners in a square of 20 cells, also beyond its sides.
TEST(TriangleCells, VisitAllCellsInside) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        TriangleCells::Corners corners;
        for (auto& corner : corners) {
            corner = {rng.uniform(-5.0, 25.0), rng.uniform(-5.0, 25.0)};
            if (rng.coin()) corner = {std::round(corner[0]), std::round(corner[1])};
        }
        const TriangleCells cells(corners, 20, 20);
        const CellRange rows = cells.rows();
        for (int row = 0; row < 20; ++row) {
            const CellRange columns = cells.columnsOf(row);
            for (int column = 0; column < 20; ++column) {
                const auto [a, b, c] = cells.barycentric(column, row);
                if (!(a >= -1e-9 && b >= -1e-9 && c >= -1e-9)) continue;
                ASSERT_TRUE(row >= rows.first && row <= rows.last);
                ASSERT_TRUE(column >= columns.first && column <= columns.last);
            }
        }
    }
}

}  // namespace
}  // namespace quarn::test
