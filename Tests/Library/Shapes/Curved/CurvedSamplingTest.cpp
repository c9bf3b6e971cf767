#include <limits>
#include <numbers>

#include "Library/Shapes/Curved/CurvedCases.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kMinInt = std::numeric_limits<int>::min();
constexpr int kMaxInt = std::numeric_limits<int>::max();

CylinderScreen arc(double minTheta, double maxTheta) {
    return {Point3(), 1.0, minTheta, maxTheta, 2.0};
}

std::vector<std::size_t> edgeSizes(const ScreenGeometry& screen) {
    Outline outline;
    screen.sampleBoundary(outline);
    std::vector<std::size_t> sizes;
    for (const auto& edge : outline) sizes.push_back(edge.size());
    return sizes;
}

using Sizes = std::vector<std::size_t>;

template <class Case>
class CurvedSampling : public ::testing::Test {
protected:
    static typename Case::Reference reference() {
        Rng rng(1);
        auto r = usualReference<Case>(rng);
        r.radius = 2.0;
        r.cx = 1.0;
        r.minTheta = -0.5;
        r.maxTheta = 1.0;
        return r;
    }
};
TYPED_TEST_SUITE(CurvedSampling, CurvedShapes, CurvedNames);

TYPED_TEST(CurvedSampling, DisplayGridHasItsSizesAndIsAppended) {
    const auto screen = TypeParam::screenOf(this->reference());
    Point3 viewPoint(9, 9, 9);
    std::vector<int> indices{-7};
    std::vector<Point3> vertices{Point3(7, 7, 7)};
    std::vector<Point3> normals{Point3(8, 8, 8)};
    screen.generateGeometry(viewPoint, indices, vertices, normals);
    ASSERT_EQ(indices.size(), 58807U);
    ASSERT_EQ(vertices.size(), 10001U);
    ASSERT_EQ(normals.size(), 10001U);
    EXPECT_EQ(indices.front(), -7);
    EXPECT_TRUE(sameBits(vertices.front(), Point3(7, 7, 7)));
    EXPECT_TRUE(sameBits(normals.front(), Point3(8, 8, 8)));
    // Two triangles on the first cell; the indices count from 0 all the same.
    EXPECT_EQ(std::vector(indices.begin() + 1, indices.begin() + 7), (std::vector{0, 100, 101, 0, 101, 1}));
    EXPECT_EQ(std::vector(indices.end() - 6, indices.end()),
              (std::vector{9898, 9998, 9999, 9898, 9999, 9899}));
    EXPECT_NE(viewPoint, Point3(9, 9, 9));
}

TYPED_TEST(CurvedSampling, FewerThanTwoSamplesAreNone) {
    const auto screen = TypeParam::screenOf(this->reference());
    for (const int count : {1, 0, -1, kMinInt}) {
        Samples samples{{Point<int, 2>(0, 0), Point3(7, 7, 7)}};
        screen.sampleHorizontally(0.5, 0.0, 1.0, count, 0, samples, true);
        ASSERT_EQ(samples.size(), 1U) << count;
        EXPECT_TRUE(sameBits(samples.begin()->second, Point3(7, 7, 7)));
    }
}

TYPED_TEST(CurvedSampling, SamplesOverwriteTheirKeysAndKeepTheOthers) {
    const auto screen = TypeParam::screenOf(this->reference());
    Samples samples{{Point<int, 2>(1, kMinInt), Point3(7, 7, 7)}, {Point<int, 2>(1, 5), Point3(7, 7, 7)}};
    screen.sampleHorizontally(0.5, 0.0, 1.0, 3, kMinInt, samples, false);
    EXPECT_EQ(samples.size(), 4U);
    EXPECT_FALSE(sameBits(samples[Point<int, 2>(1, kMinInt)], Point3(7, 7, 7)));
    EXPECT_TRUE(sameBits(samples[Point<int, 2>(1, 5)], Point3(7, 7, 7)));
}

TYPED_TEST(CurvedSampling, SamplesBesideTheUnitSquareNeedTheFlag) {
    const auto screen = TypeParam::screenOf(this->reference());
    const auto countOf = [&screen](double v, double uStart, double uEnd, bool extrapolate) {
        Samples samples;
        screen.sampleHorizontally(v, uStart, uEnd, 5, 0, samples, extrapolate);
        return samples.size();
    };
    EXPECT_EQ(countOf(0.0, 0.0, 1.0, false), 5U) << "both ends belong to the range";
    EXPECT_EQ(countOf(1.0, 1.0, 0.0, false), 5U);
    EXPECT_EQ(countOf(0.5, -0.5, 1.5, false), 3U);
    EXPECT_EQ(countOf(0.5, -0.5, 1.5, true), 5U);
    for (const double v : {-1e-12, 1.0 + 1e-12, std::nan("")}) {
        EXPECT_EQ(countOf(v, 0.0, 1.0, false), 0U);
        EXPECT_EQ(countOf(v, 0.0, 1.0, true), 5U);
    }
}

TYPED_TEST(CurvedSampling, CalibrationCountsThatAreNotPositiveGiveNone) {
    const auto screen = TypeParam::screenOf(this->reference());
    for (const int none : {0, -1, kMinInt}) {
        for (const int other : {-3, 0, 1, 3, kMaxInt}) {
            EXPECT_TRUE(screen.getDefaultCalibrationPoints(none, other).empty());
            EXPECT_TRUE(screen.getDefaultCalibrationPoints(other, none).empty());
        }
    }
}

// Intended: the center is not added, and a count of 1 divides by zero.
TYPED_TEST(CurvedSampling, CalibrationPointsLieAroundTheOriginColumnByColumn) {
    const auto reference = this->reference();
    const auto screen = TypeParam::screenOf(reference);
    const auto points = screen.getDefaultCalibrationPoints(3, 2);
    ASSERT_EQ(points.size(), 6U);
    const Point2 uvs[] = {Point2(0, 0),   Point2(0, 1), Point2(0.5, 0),
                          Point2(0.5, 1), Point2(1, 0), Point2(1, 1)};
    for (std::size_t k = 0; k < points.size(); ++k) {
        const Point3 mapped = reference.positionAt(uvs[k][0], uvs[k][1]);
        const Point3 relative(mapped[0] - reference.cx, mapped[1] - reference.cy, mapped[2] - reference.cz);
        EXPECT_NEAR(length(points[k] - relative), 0.0, 1e-14) << k;
    }
    for (const Point3& point : screen.getDefaultCalibrationPoints(1, 2)) EXPECT_TRUE(std::isnan(point[0]));
    const auto row = screen.getDefaultCalibrationPoints(2, 1);
    ASSERT_EQ(row.size(), 2U);
    EXPECT_TRUE(std::isnan(row[0][2]));
}

TYPED_TEST(CurvedSampling, GridHasItsCountsOfPositions) {
    const auto screen = TypeParam::screenOf(this->reference());
    const std::pair<int, std::size_t> cases[] = {{5, 234}, {4, 234}, {2, 138}, {1, 42}, {0, 42}};
    for (const auto& [density, count] : cases) {
        Outline grid(3);
        screen.sampleGrid(grid, density);
        ASSERT_EQ(grid.size(), 1U);
        EXPECT_EQ(grid.front().size(), count) << density;
    }
    for (const int density : {-1, -2, kMinInt}) {
        Outline grid(3);
        screen.sampleGrid(grid, density);
        ASSERT_EQ(grid.size(), 1U);
        EXPECT_TRUE(grid.front().empty());
    }
}

TEST(CurvedDisplay, ViewerOfACylinderStandsByTheLargerOfRadiusAndHalfHeight) {
    const auto viewOf = [](double radius, double height) {
        DisplayGeometry d;
        CylinderScreen(Point3(9, 9, 9), radius, 0.0, 1.0, height)
            .generateGeometry(d.viewPoint, d.indices, d.vertices, d.normals);
        EXPECT_EQ(d.viewPoint[0], 0.0);
        EXPECT_EQ(d.viewPoint[2], 0.0);
        return d.viewPoint[1];
    };
    EXPECT_EQ(viewOf(0.5, 0.25), -0.5);
    EXPECT_EQ(viewOf(1.0, 0.0), -5.0);
    EXPECT_EQ(viewOf(std::nextafter(1.0, 0.0), 0.0), -std::nextafter(1.0, 0.0));
    EXPECT_EQ(viewOf(0.0, 8.0), -20.0);
    EXPECT_EQ(viewOf(5.0, 8.0), -50.0);
    EXPECT_EQ(viewOf(std::nextafter(5.0, 0.0), 0.0), -5.0 * std::nextafter(5.0, 0.0));
    EXPECT_EQ(viewOf(-2.0, -8.0), 2.0) << "a negative size stands on the other side";
}

TEST(CurvedDisplay, ViewerOfASphereStandsByItsRadius) {
    const std::pair<double, double> cases[] = {
        {0.5, -0.5}, {1.0, -5.0}, {4.0, -20.0}, {5.0, -50.0}, {0.0, 0.0}};
    for (const auto& [radius, y] : cases) {
        DisplayGeometry d;
        SphericalScreen(Point3(9, 9, 9), radius, 0.0, 1.0, -1.5, 1.5)
            .generateGeometry(d.viewPoint, d.indices, d.vertices, d.normals);
        EXPECT_EQ(d.viewPoint, Point3(0.0, y, 0.0));
    }
}

// Intended: only the sphere's vertices include the center.
TEST(CurvedDisplay, CentreMovesTheVerticesOfTheSphereAlone) {
    DisplayGeometry c;
    CylinderScreen(Point3(9, 9, 9), 2.0, 0.0, 1.0, 4.0)
        .generateGeometry(c.viewPoint, c.indices, c.vertices, c.normals);
    EXPECT_TRUE(sameBits(c.vertices.front(), Point3(0, 2, 2)));
    EXPECT_TRUE(sameBits(c.normals.front(), Point3(-0.0, -1, 0)));
    DisplayGeometry s;
    SphericalScreen(Point3(9, 9, 9), 2.0, 0.0, 1.0, -1.0, 0.0)
        .generateGeometry(s.viewPoint, s.indices, s.vertices, s.normals);
    EXPECT_TRUE(sameBits(s.vertices.front(), Point3(9, 11, 9)));
    EXPECT_TRUE(sameBits(s.normals.front(), Point3(-0.0, -1, -0.0)));
}

TEST(CylinderBoundary, HasASampleForTwoDegreesOfArc) {
    EXPECT_EQ(edgeSizes(arc(0.0, kPi / 2)), (Sizes{45, 20, 45, 20})) << "half of 90 degrees";
    EXPECT_EQ(edgeSizes(arc(1.0, -1.0)), (Sizes{57, 20, 57, 20})) << "limits may be reversed";
}

// Intended: the factor from radians to degrees is rounded up at its tenth decimal, by 3 in 10^13.
TEST(CylinderBoundary, FactorOfDegreesIsATraceTooLarge) {
    const double twoDegrees = kPi / 90.0;
    EXPECT_EQ(edgeSizes(arc(0.0, twoDegrees * (1.0 - 1e-13))), (Sizes{1, 20, 1, 20}));
    EXPECT_EQ(edgeSizes(arc(0.0, twoDegrees * (1.0 - 1e-12))), (Sizes{0, 20, 0, 20}));
}

TEST(CylinderBoundary, FullCircleHasNoSidesButFourPolylines) {
    EXPECT_EQ(edgeSizes(arc(0.0, 6.283185307179586)), (Sizes{180, 0, 180, 0}));
    EXPECT_EQ(edgeSizes(arc(6.283185307179586, 0.0)), (Sizes{180, 0, 180, 0}));
    EXPECT_EQ(edgeSizes(arc(0.0, std::nextafter(6.283185307179586, 0.0))), (Sizes{180, 20, 180, 20}));
}

TEST(CylinderBoundary, NoArcAndNoNumberHaveSidesAlone) {
    EXPECT_EQ(edgeSizes(arc(1.0, 1.0)), (Sizes{0, 20, 0, 20}));
    EXPECT_EQ(edgeSizes(arc(0.0, std::nan(""))), (Sizes{0, 20, 0, 20}));
    EXPECT_EQ(edgeSizes(arc(0.0, 1e300)), (Sizes{0, 0, 0, 0}));
}

TEST(CylinderBoundary, WalksRoundOnceFromTheTopLeftCorner) {
    Outline outline(1);
    const CylinderScreen screen(Point3(1, 2, 3), 1.0, -1.0, 1.0, 2.0);
    screen.sampleBoundary(outline);
    ASSERT_EQ(outline.size(), 5U) << "appended";
    const Point2 corners[] = {Point2(0, 0), Point2(1, 0), Point2(1, 1), Point2(0, 1)};
    for (std::size_t edge = 0; edge < 4; ++edge) {
        Point3 corner;
        screen.mapInto3D(corners[edge], corner, true);
        EXPECT_TRUE(sameBits(outline[edge + 1].front(), corner)) << edge;
    }
}

// Intended: the edges along which v changes take the count of the azimuth, and the others that of
// the elevation.
TEST(SphereBoundary, CountsAreSwappedBetweenTheSides) {
    EXPECT_EQ(edgeSizes(SphericalScreen(Point3(), 1.0, 0.0, 2.0, 0.0, 0.5)), (Sizes{57, 14, 57, 14}));
    // 57.29... degrees are cut to 57 and halved to 28.
    EXPECT_EQ(edgeSizes(SphericalScreen(Point3(), 1.0, 0.0, 1.0, 0.0, 0.05)), (Sizes{28, 1, 28, 1}));
}

TEST(SphereBoundary, ReversedLimitsAndFullTurnsAreNotSpecial) {
    EXPECT_EQ(edgeSizes(SphericalScreen(Point3(), 1.0, 2.0, 0.0, 0.0, 0.5)), (Sizes{0, 14, 0, 14}));
    EXPECT_EQ(edgeSizes(SphericalScreen(Point3(), 1.0, 0.0, 2.0, 0.5, 0.0)), (Sizes{57, 0, 57, 0}));
    EXPECT_EQ(edgeSizes(SphericalScreen(Point3(), 1.0, -kPi, kPi, 0.0, 0.5)), (Sizes{180, 14, 180, 14}));
    EXPECT_EQ(edgeSizes(SphericalScreen(Point3(), 1.0, 0.0, std::nan(""), 0.0, 1e300)), (Sizes{0, 0, 0, 0}));
}

TEST(SphereBoundary, WalksRoundOnceFromTheTopLeftCornerDownwards) {
    Outline outline(1);
    const SphericalScreen screen(Point3(1, 2, 3), 1.0, -1.0, 1.0, -0.5, 0.5);
    screen.sampleBoundary(outline);
    ASSERT_EQ(outline.size(), 5U) << "appended";
    const Point2 corners[] = {Point2(0, 0), Point2(0, 1), Point2(1, 1), Point2(1, 0)};
    for (std::size_t edge = 0; edge < 4; ++edge) {
        Point3 corner;
        screen.mapInto3D(corners[edge], corner, true);
        EXPECT_TRUE(sameBits(outline[edge + 1].front(), corner)) << edge;
    }
}

}  // namespace
}  // namespace quarn::test
