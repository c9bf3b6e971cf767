// Samples of a ruled screen: for display, for calibration and along a line.
#include <gtest/gtest.h>

#include <limits>

#include "Library/Shapes/Ruled/RuledScreens.h"

using namespace quarn::test;

namespace {

constexpr int kMinInt = std::numeric_limits<int>::min();

struct Geometry {
    Point3 viewPoint;
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;
};

Geometry geometryOf(const RuledSurfaceScreen& screen) {
    Geometry geometry;
    screen.generateGeometry(geometry.viewPoint, geometry.indices, geometry.vertices, geometry.normals);
    return geometry;
}

Point3 positionAt(const RuledSurfaceScreen& screen, double u, double v) {
    Point3 point;
    screen.mapInto3D(Point2(u, v), point, true);
    return point;
}

double viewDistanceOf(double width, double height) {
    return geometryOf(OpenRuledScreen(width, height, -0.5, 0.5, -0.4, 0.4)).viewPoint[1];
}

}  // namespace

TEST(RuledScreenSampling, DisplayVerticesRunDownEachRuling) {
    const OpenRuledScreen screen(kQuarters);
    const Geometry geometry = geometryOf(screen);
    ASSERT_EQ(geometry.vertices.size(), 10000U);
    EXPECT_TRUE(sameBits(geometry.vertices[0], positionAt(screen, 0, 0)));
    EXPECT_TRUE(sameBits(geometry.vertices[1], positionAt(screen, 0, 1 / 99.0)));
    EXPECT_TRUE(sameBits(geometry.vertices[100], positionAt(screen, 1 / 99.0, 0)));
    EXPECT_TRUE(sameBits(geometry.vertices[1234], positionAt(screen, 12 / 99.0, 34 / 99.0)));
    EXPECT_TRUE(sameBits(geometry.vertices[9999], positionAt(screen, 1, 1)));
}

TEST(RuledScreenSampling, DisplayIndicesCoverEachCellWithTwoTriangles) {
    const Geometry geometry = geometryOf(OpenRuledScreen(kQuarters));
    ASSERT_EQ(geometry.indices.size(), 99U * 99U * 6U);
    std::vector<int> expected;
    for (int i = 1; i <= 99; ++i)
        for (int j = 0; j <= 98; ++j) {
            const int a = (i - 1) * 100 + j;
            const int b = i * 100 + j;
            for (const int index : {a, b, b + 1, a, b + 1, a + 1}) expected.push_back(index);
        }
    EXPECT_EQ(geometry.indices, expected);
}

TEST(RuledScreenSampling, DisplayNormalsPointTowardsTheViewer) {
    const OpenRuledScreen screen(kQuarters);
    const Geometry geometry = geometryOf(screen);
    ASSERT_EQ(geometry.normals.size(), 10000U);
    // Half a cell of pi/2 / 99 is how far the difference to the next vertex leans from the tangent.
    constexpr double kLean = std::numbers::pi / 2 / 99;
    for (std::size_t k = 0; k < 10000; ++k) {
        EXPECT_NEAR(length(geometry.normals[k]), 1.0, 1e-14);
        if (k % 100 == 99) continue;
        EXPECT_LT(dot(geometry.normals[k], screen.getScreenNormal(geometry.vertices[k])), -std::cos(kLean));
    }
}

TEST(RuledScreenSampling, LastRowOfDisplayNormalsTakesAPositionForADifference) {
    const Geometry geometry = geometryOf(OpenRuledScreen(kQuarters));
    for (const std::size_t k : {99U, 5099U, 9999U}) {
        const std::vector<Point3>& v = geometry.vertices;
        const Point3 alongU = k == 9999U ? v[k] - v[k - 100] : v[k + 100] - v[k];
        const Point3 position = v[k] + v[k] - v[k - 1];
        const Point3 expected = normalized(cross(normalized(position), normalized(alongU)));
        EXPECT_LT(length(geometry.normals[k] - expected), 1e-14);
        // The difference proper would give that of the row above.
        EXPECT_GT(length(geometry.normals[k] - geometry.normals[k - 1]), 0.1);
    }
}

TEST(RuledScreenSampling, GeometryIsAppendedAndTheNormalsReadFromTheBeginning) {
    const OpenRuledScreen screen(kQuarters);
    const Geometry once = geometryOf(screen);
    Geometry twice = once;
    OpenRuledScreen(4.0, 1.0, -0.3, 0.3, -1.0, 1.0)
        .generateGeometry(twice.viewPoint, twice.indices, twice.vertices, twice.normals);
    ASSERT_EQ(twice.vertices.size(), 20000U);
    ASSERT_EQ(twice.normals.size(), 20000U);
    ASSERT_EQ(twice.indices.size(), 2 * once.indices.size());
    for (std::size_t k = 0; k < 10000; ++k) {
        EXPECT_TRUE(sameBits(twice.vertices[k], once.vertices[k]));
        EXPECT_TRUE(sameBits(twice.normals[k + 10000], once.normals[k])) << "of the first vertices again";
    }
    EXPECT_EQ(twice.indices[once.indices.size()], 0) << "indices count from the first vertex again";
}

TEST(RuledScreenSampling, ViewPointDistanceGrowsInThreeSteps) {
    EXPECT_EQ(viewDistanceOf(1.0, 0.5), -0.5);
    EXPECT_EQ(viewDistanceOf(0.5, 1.0), -0.5);
    EXPECT_EQ(viewDistanceOf(2.0, 1.0), -5.0);
    EXPECT_EQ(viewDistanceOf(1.0, 8.0), -20.0);
    EXPECT_EQ(viewDistanceOf(10.0, 1.0), -50.0);
    EXPECT_EQ(viewDistanceOf(-4.0, -2.0), 1.0);
    const double belowTwo = std::nextafter(2.0, 0.0);
    EXPECT_EQ(viewDistanceOf(belowTwo, 0.0), -belowTwo / 2);
    const double belowTen = std::nextafter(10.0, 0.0);
    EXPECT_EQ(viewDistanceOf(0.0, belowTen), belowTen / 2 * -5.0);
    EXPECT_EQ(geometryOf(OpenRuledScreen(kQuarters)).viewPoint[0], 0.0);
}

TEST(RuledScreenSampling, CalibrationPointsRunColumnByColumn) {
    const OpenRuledScreen screen(kQuarters);
    const std::vector<Point3> points = screen.getDefaultCalibrationPoints(3, 2);
    ASSERT_EQ(points.size(), 6U);
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 2; ++j)
            EXPECT_TRUE(sameBits(points[i * 2 + j],
                                 positionAt(screen, static_cast<double>(i) / 2.0, static_cast<double>(j))));
}

TEST(RuledScreenSampling, OneColumnOrRowOfCalibrationPointsIsNotANumber) {
    const OpenRuledScreen screen(kQuarters);
    const std::vector<Point3> column = screen.getDefaultCalibrationPoints(1, 3);
    ASSERT_EQ(column.size(), 3U);
    for (const Point3& point : column) EXPECT_TRUE(std::isnan(point[0]));
    const std::vector<Point3> row = screen.getDefaultCalibrationPoints(3, 1);
    ASSERT_EQ(row.size(), 3U);
    for (const Point3& point : row) EXPECT_TRUE(std::isnan(point[2]));
}

TEST(RuledScreenSampling, NoCalibrationPointsForCountsBelowOne) {
    const OpenRuledScreen screen(kQuarters);
    for (const int count : {0, -1, kMinInt}) {
        EXPECT_TRUE(screen.getDefaultCalibrationPoints(count, 3).empty());
        EXPECT_TRUE(screen.getDefaultCalibrationPoints(3, count).empty());
        EXPECT_TRUE(screen.getDefaultCalibrationPoints(count, count).empty());
    }
}

TEST(RuledScreenSampling, SamplesStandUnderColumnAndRow) {
    const OpenRuledScreen screen(kQuarters);
    std::map<Point<int, 2>, Point3> samples{{Point<int, 2>(0, 7), Point3(9, 9, 9)},
                                            {Point<int, 2>(0, 8), Point3(9, 9, 9)}};
    screen.sampleHorizontally(0.25, 0.0, 1.5, 4, 7, samples, true);
    ASSERT_EQ(samples.size(), 5U);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(sameBits(samples.at(Point<int, 2>(i, 7)), positionAt(screen, i * 0.5, 0.25)));
    EXPECT_TRUE(sameBits(samples.at(Point<int, 2>(0, 8)), Point3(9, 9, 9)));
}

TEST(RuledScreenSampling, SamplesWithoutExtrapolationAskTheSection) {
    const OpenRuledScreen screen(kQuarters);
    std::map<Point<int, 2>, Point3> samples;
    screen.sampleHorizontally(0.25, -0.25, 1.25, 7, 0, samples, false);
    for (int i = 0; i < 7; ++i) {
        Point3 point;
        const bool isOn = screen.mapInto3D(Point2(i * 0.25 - 0.25, 0.25), point, false);
        EXPECT_EQ(samples.count(Point<int, 2>(i, 0)), isOn ? 1U : 0U) << i;
    }
    EXPECT_EQ(samples.count(Point<int, 2>(0, 0)), 0U);
    EXPECT_EQ(samples.count(Point<int, 2>(3, 0)), 1U);
    // There is no test of v: a line above the top edge passes for one on the section.
    samples.clear();
    screen.sampleHorizontally(-0.5, 0.4, 0.6, 3, 0, samples, false);
    EXPECT_EQ(samples.size(), 3U);
}

TEST(RuledScreenSampling, FewerThanTwoSamplesAreNone) {
    std::map<Point<int, 2>, Point3> samples;
    for (const int count : {1, 0, -1, kMinInt})
        OpenRuledScreen(kQuarters).sampleHorizontally(0.5, 0.0, 1.0, count, 0, samples, true);
    EXPECT_TRUE(samples.empty());
}
