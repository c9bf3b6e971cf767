#include <QuarnKit/Plot/Mesh/PlotRaster.h>

#include <gmock/gmock.h>

#include <limits>
#include <map>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

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

TEST(PlotRaster, AreasCoverEachCellOnceInItsClass) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::map<std::pair<int, int>, std::string> cells;
        for (int row = 0; row < 8; ++row)
            for (int column = 0; column < 6; ++column)
                cells[{column, row}] =
                    std::string("ab").substr(0, static_cast<std::size_t>(rng.integer(0, 2)));
        const auto areas = cellAreas(
            6, 8,
            [&](int column, int row) {
                return cells[{column, row}];
            },
            [](int column, int row) { return ViewPoint(column, row); });
        std::map<std::pair<int, int>, std::string> drawn;
        for (const Shape& area : areas)
            for (int row = static_cast<int>(area.points[0][1]); row < static_cast<int>(area.points[2][1]);
                 ++row)
                for (int column = static_cast<int>(area.points[0][0]);
                     column < static_cast<int>(area.points[2][0]); ++column)
                    ASSERT_TRUE(drawn.try_emplace({column, row}, area.styleClass).second) << "drawn twice";
        std::erase_if(cells, [](const auto& cell) { return cell.second.empty(); });
        ASSERT_EQ(drawn, cells);
    }
}

TEST(PlotRaster, EvenSquareIsOneArea) {
    const auto areas = cellAreas(
        50, 50, [](int /*column*/, int /*row*/) { return std::string("f3"); },
        [](int column, int row) { return ViewPoint(column, row); });
    ASSERT_THAT(areas, SizeIs(1));
    EXPECT_EQ(areas[0].points[2], ViewPoint(50.0, 50.0));
    EXPECT_THAT(cellAreas(
                    0, 0, [](int /*column*/, int /*row*/) { return std::string("f3"); },
                    [](int column, int row) { return ViewPoint(column, row); }),
                IsEmpty());
}

}  // namespace
}  // namespace quarn::test
