#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Reference/Mesh/ReferenceViews.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/OverriddenScreen.h"

using namespace quarn::test;

namespace {

Point3 onX(double x) {
    return {x, 0.0, 0.0};
}

// A screen without parameterization and with the given boundary.
class RimScreen : public OverriddenScreen {
public:
    explicit RimScreen(const Lines& lines, Mesh mesh = {}) {
        load(std::move(mesh));
        parameterized = false;
        onSampleBoundary = [lines](Lines& out) { out = lines; };
    }
};

std::vector<Point3> lineOf(int count) {
    std::vector<Point3> line(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < line.size(); ++i) line[i] = onX(static_cast<double>(i));
    return line;
}

std::vector<double> xOf(const std::vector<Point3>& points) {
    std::vector<double> coordinates;
    coordinates.reserve(points.size());
    for (const Point3& point : points) coordinates.push_back(point[0]);
    return coordinates;
}

using Numbers = std::vector<double>;

}  // namespace

TEST(MeshCalibrationPoints, ByUVGoRowByRowFromLeftToRight) {
    const TriangleScreen screen(flatGrid({4, 4}));
    const auto points = screen.getDefaultCalibrationPoints(3, 2);
    ASSERT_EQ(points.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(points[i], Point3(2.0 * static_cast<double>(i % 3) - 2.0, 0.0, i < 3 ? 1.5 : -1.5));
}

TEST(MeshCalibrationPoints, ByUVOfOneRowOrColumnAreNone) {
    const TriangleScreen screen(flatGrid({4, 4}));
    EXPECT_TRUE(screen.getDefaultCalibrationPoints(4, 1).empty());
    EXPECT_TRUE(screen.getDefaultCalibrationPoints(1, 4).empty());
    for (const int none : {0, -1, std::numeric_limits<int>::min()}) {
        EXPECT_TRUE(screen.getDefaultCalibrationPoints(none, 4).empty());
        EXPECT_TRUE(screen.getDefaultCalibrationPoints(4, none).empty());
    }
}

TEST(MeshCalibrationPoints, ByUVAskTheScreensOwnSampling) {
    OverriddenScreen screen;
    std::vector<double> heights;
    screen.onSampleHorizontally = [&](double v, int count, int row, IScreenGeometry::GridSamples& samples,
                                      bool extrapolate) {
        EXPECT_EQ(count, 5);
        EXPECT_EQ(row, 1);
        EXPECT_TRUE(samples.empty());
        EXPECT_FALSE(extrapolate);
        heights.push_back(v);
        samples[{2, 0}] = onX(2.0);
        samples[{1, 9}] = onX(1.0);
    };
    EXPECT_EQ(xOf(screen.getDefaultCalibrationPoints(5, 3)), (Numbers{1.0, 2.0, 1.0, 2.0, 1.0, 2.0}));
    EXPECT_EQ(heights, (Numbers{0.0, 0.5, 1.0}));
}

TEST(MeshCalibrationPoints, ByUVAreThoseOfTheReference) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleScreen screen(anyMesh(rng));
        const int columns = rng.integer(-1, 7);
        const int rows = rng.integer(-1, 7);
        ASSERT_TRUE(sameBits(screen.getDefaultCalibrationPoints(columns, rows),
                             referencePointsByUV(screen, columns, rows)));
    }
}

TEST(MeshCalibrationPoints, OfTheRimAreNoneWithoutAnyPolyline) {
    const RimScreen screen({}, flatGrid({2, 2}));
    EXPECT_TRUE(screen.getDefaultCalibrationPoints(9, 9).empty());
    TriangleScreen empty;
    empty.parameterized = false;
    EXPECT_TRUE(empty.getDefaultCalibrationPoints(9, 9).empty());
}

TEST(MeshCalibrationPoints, OfTheRimOfTwoByTwoAreAboutFourAndTheLast) {
    EXPECT_EQ(xOf(RimScreen({lineOf(17)}).getDefaultCalibrationPoints(2, 2)), (Numbers{0, 4, 8, 12, 16}));
    EXPECT_EQ(xOf(RimScreen({lineOf(10)}).getDefaultCalibrationPoints(2, 2)), (Numbers{0, 2, 4, 6, 8, 9}));
    EXPECT_EQ(xOf(RimScreen({lineOf(3)}).getDefaultCalibrationPoints(2, 2)), (Numbers{0, 1, 2}));

    // A sheet of 4 x 4 cells: its corners, and the first once more as the last.
    TriangleScreen sheet(flatGrid({4, 4}));
    sheet.parameterized = false;
    const auto points = sheet.getDefaultCalibrationPoints(2, 2);
    ASSERT_EQ(points.size(), 5U);
    EXPECT_EQ(points.front(), points.back());
    for (const Point3& point : points) EXPECT_EQ(std::abs(point[0]), 2.0);
}

TEST(MeshCalibrationPoints, OfTheRimOfThreeByThreeEndWithTheCornerNearestToTheOrigin) {
    Mesh mesh = flatGrid({4, 4});
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices) corner.position[1] = 3.0;
    const RimScreen screen({lineOf(20)}, mesh);
    for (const auto& [columns, rows] : {std::pair(3, 3), std::pair(2, 4), std::pair(4, 2)}) {
        const auto points = screen.getDefaultCalibrationPoints(columns, rows);
        EXPECT_EQ(xOf({points.begin(), points.end() - 1}), (Numbers{0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 19}));
        EXPECT_EQ(points.back(), Point3(0.0, 3.0, 0.0));
    }
    EXPECT_EQ(screen.getDefaultCalibrationPoints(2, 2).back(), onX(19.0));
}

TEST(MeshCalibrationPoints, OfTheRimTakeTheFirstOfEquallyNearCorners) {
    // All three corners measure 6, though their distances differ.
    const Triangle triangle = wholeTriangle({0.0, 6.0, 0.0}, {2.0, -2.0, 2.0}, {-1.0, 2.0, 3.0});
    EXPECT_EQ(RimScreen({lineOf(1)}, {triangle}).getDefaultCalibrationPoints(3, 3).back(),
              Point3(0.0, 6.0, 0.0));
}

TEST(MeshCalibrationPoints, OfTheRimTakeEveryPointWhereTheDivisorIsZeroOrBelow) {
    const RimScreen screen({lineOf(40)});
    for (const auto& [columns, rows] :
         {std::pair(1, 1), std::pair(0, 0), std::pair(0, 2), std::pair(-7, -7), std::pair(2, -900)})
        EXPECT_EQ(screen.getDefaultCalibrationPoints(columns, rows).size(), 40U) << columns << ' ' << rows;
    EXPECT_EQ(screen.getDefaultCalibrationPoints(1, 2).size(), 3U);
}

TEST(MeshCalibrationPoints, OfTheRimCountEachPolylineByItself) {
    EXPECT_EQ(xOf(RimScreen({lineOf(9), {}, lineOf(2), lineOf(1)}).getDefaultCalibrationPoints(2, 2)),
              (Numbers{0, 2, 4, 6, 8, 0, 1, 0}));
}

TEST(MeshCalibrationPoints, OfTheRimSkipTheEntryThatMovesIntoTheGap) {
    const auto kept = [](const Numbers& numbers) {
        std::vector<Point3> line;
        for (const double number : numbers) line.push_back(onX(number));
        return xOf(RimScreen({line}).getDefaultCalibrationPoints(1, 1));
    };
    EXPECT_EQ(kept({1, 1, 2}), (Numbers{1, 2}));
    EXPECT_EQ(kept({1, 1, 1, 2}), (Numbers{1, 1, 2}));
    EXPECT_EQ(kept({1, 1, 1, 1}), (Numbers{1, 1}));
    EXPECT_EQ(kept({1, 2, 2, 3, 3, 3}), (Numbers{1, 2, 3, 3}));
    EXPECT_EQ(kept({0.0, -0.0, 1}), (Numbers{0, 1}));
    EXPECT_EQ(kept({std::nan(""), std::nan("")}).size(), 2U);
}

TEST(MeshCalibrationPoints, OfTheRimAreThoseOfTheReference) {
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Lines lines(static_cast<std::size_t>(rng.integer(0, 3)));
        for (auto& line : lines)
            for (int k = rng.integer(0, 30); k > 0; --k) line.push_back(rng.integerPoint(0, 1));
        const Mesh mesh = i % 10 == 0 ? anyMesh(rng)
                                      : Mesh{wholeTriangle(rng.integerPoint(-2, 2), rng.integerPoint(-2, 2),
                                                           rng.integerPoint(-2, 2))};
        const int columns = rng.integer(-3, 6);
        const int rows = rng.integer(-3, 6);
        const RimScreen screen(lines, mesh);
        ASSERT_TRUE(sameBits(screen.getDefaultCalibrationPoints(columns, rows),
                             referencePointsOfBoundary(lines, mesh, columns, rows)));
    }
}
