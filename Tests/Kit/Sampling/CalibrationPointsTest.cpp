#include <QuarnKit/Sampling/CalibrationPoints.h>

#include <gtest/gtest.h>

#include <vector>

#include <QuarnScreen/FlatScreen.h>
#include "Support/GeometryBits.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleScreen.h"

namespace quarn::test {
namespace {

std::vector<CalibrationPoint> pointsOf(const IScreenGeometry& screen, int columns, int rows) {
    std::vector<CalibrationPoint> points;
    visitCalibrationPoints(screen, columns, rows,
                           [&](const CalibrationPoint& point) { points.push_back(point); });
    return points;
}

std::vector<Point3> positionsOf(const std::vector<CalibrationPoint>& points) {
    std::vector<Point3> positions;
    for (const CalibrationPoint& point : points)
        if (point.position) positions.push_back(*point.position);
    return positions;
}

TEST(CalibrationPoints, EveryPlaceOfAMeshIsVisitedAndThePositionsAreThoseOfTheScreen) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleScreen screen(anyMesh(rng));
        const int columns = rng.integer(2, 7);
        const int rows = rng.integer(2, 7);
        const auto points = pointsOf(screen, columns, rows);
        ASSERT_TRUE(sameBits(positionsOf(points), screen.getDefaultCalibrationPoints(columns, rows)));
        if (!screen.hasParameterization() || screen.mesh().empty()) continue;
        ASSERT_EQ(points.size(), static_cast<std::size_t>(columns * rows));
        for (std::size_t k = 0; k < points.size(); ++k) {
            ASSERT_TRUE(points[k].place);
            EXPECT_EQ(points[k].place->column, static_cast<int>(k) % columns + 1);
            EXPECT_EQ(points[k].place->row, static_cast<int>(k) / columns + 1);
            Point3 position;
            EXPECT_EQ(screen.mapInto3D(points[k].place->uv, position, false), points[k].position.has_value());
        }
    }
}

TEST(CalibrationPoints, AnAnalyticScreenIsVisitedColumnByColumn) {
    FlatScreen screen(4.0, 3.0);
    const auto points = pointsOf(screen, 3, 2);
    ASSERT_EQ(points.size(), 6U);
    EXPECT_TRUE(sameBits(positionsOf(points), screen.getDefaultCalibrationPoints(3, 2)));
    for (std::size_t k = 0; k < points.size(); ++k) {
        ASSERT_TRUE(points[k].place);
        EXPECT_EQ(points[k].place->column, static_cast<int>(k) / 2 + 1);
        EXPECT_EQ(points[k].place->row, static_cast<int>(k) % 2 + 1);
        EXPECT_EQ(points[k].place->uv, Point2(static_cast<double>(k / 2) / 2.0, static_cast<double>(k % 2)));
    }
}

TEST(CalibrationPoints, PositionsOfAMeshWithoutUVHaveNoPlace) {
    TriangleScreen screen(flatGrid({4, 4}));
    screen.parameterized = false;
    const auto points = pointsOf(screen, 2, 2);
    EXPECT_TRUE(sameBits(positionsOf(points), screen.getDefaultCalibrationPoints(2, 2)));
    for (const CalibrationPoint& point : points) EXPECT_FALSE(point.place);
}

}  // namespace
}  // namespace quarn::test
