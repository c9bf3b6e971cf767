#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/GeometryBits.h"
#include "Support/Rng.h"

using namespace quarn::test;

namespace {

constexpr int kMinInt = std::numeric_limits<int>::min();
constexpr int kMaxInt = std::numeric_limits<int>::max();

using Samples = IScreenGeometry::GridSamples;

Samples samplesOf(double v, double uStart, double uEnd, int count, bool extrapolate) {
    Samples samples;
    FlatScreen(4.0, 3.0).sampleHorizontally(v, uStart, uEnd, count, 7, samples, extrapolate);
    return samples;
}

}  // namespace

TEST(FlatScreenSampling, CountBelowTwoWritesNothing) {
    for (const int count : {1, 0, -1, -2, kMinInt})
        for (const bool extrapolate : {false, true})
            EXPECT_TRUE(samplesOf(0.5, 0.0, 1.0, count, extrapolate).empty()) << count;
}

TEST(FlatScreenSampling, LineBelowTheScreenIsKeptOnlyWithExtrapolation) {
    EXPECT_TRUE(samplesOf(1.5, 0.0, 1.0, 5, false).empty());
    EXPECT_EQ(samplesOf(1.5, 0.0, 1.0, 5, true).size(), 5U);
}

TEST(FlatScreenSampling, SamplesRunFromStartToEndUnderColumnAndRow) {
    const Samples expected{{{0, 7}, Point3(-2, 0, 0.75)},
                           {{1, 7}, Point3(-1, 0, 0.75)},
                           {{2, 7}, Point3(0, 0, 0.75)},
                           {{3, 7}, Point3(1, 0, 0.75)},
                           {{4, 7}, Point3(2, 0, 0.75)}};
    EXPECT_TRUE(sameBits(samplesOf(0.25, 0.0, 1.0, 5, false), expected));
}

TEST(FlatScreenSampling, LeavesOutSamplesBeyondTheSidesAndKeepsTheirNumbers) {
    const Samples samples = samplesOf(0.5, -0.5, 1.5, 5, false);
    const Samples expected{{{1, 7}, Point3(-2, 0, 0)}, {{2, 7}, Point3(0, 0, 0)}, {{3, 7}, Point3(2, 0, 0)}};
    EXPECT_TRUE(sameBits(samples, expected));
    EXPECT_EQ(samplesOf(0.5, -0.5, 1.5, 5, true).size(), 5U);
}

TEST(FlatScreenSampling, UnitSquareIsClosedAndHasNoTolerance) {
    const double below = -std::numeric_limits<double>::denorm_min();
    const double above = std::nextafter(1.0, 2.0);
    EXPECT_EQ(samplesOf(0.0, 0.0, 1.0, 2, false).size(), 2U);
    EXPECT_EQ(samplesOf(1.0, 0.0, 1.0, 2, false).size(), 2U);
    EXPECT_EQ(samplesOf(-0.0, -0.0, 1.0, 2, false).size(), 2U);
    EXPECT_EQ(samplesOf(below, 0.0, 1.0, 2, false).size(), 0U);
    EXPECT_EQ(samplesOf(above, 0.0, 1.0, 2, false).size(), 0U);
    EXPECT_EQ(samplesOf(0.5, below, 1.0, 2, false).size(), 1U);
    EXPECT_EQ(samplesOf(0.5, 0.0, above, 2, false).size(), 1U);
}

TEST(FlatScreenSampling, NaNIsLeftOutUnlessExtrapolating) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(samplesOf(nan, 0.0, 1.0, 3, false).empty());
    EXPECT_TRUE(samplesOf(0.5, nan, 1.0, 3, false).empty());
    EXPECT_TRUE(samplesOf(0.5, 0.0, nan, 3, false).empty());
    EXPECT_EQ(samplesOf(nan, 0.0, 1.0, 3, true).size(), 3U);
}

TEST(FlatScreenSampling, OverwritesItsOwnKeysAndKeepsOthers) {
    Samples samples{{{0, 7}, Point3(9, 9, 9)}, {{0, 8}, Point3(8, 8, 8)}, {{5, 7}, Point3(5, 5, 5)}};
    FlatScreen(4.0, 3.0).sampleHorizontally(0.5, 0.0, 1.0, 2, 7, samples, false);
    const Samples expected{{{0, 7}, Point3(-2, 0, 0)},
                           {{0, 8}, Point3(8, 8, 8)},
                           {{1, 7}, Point3(2, 0, 0)},
                           {{5, 7}, Point3(5, 5, 5)}};
    EXPECT_TRUE(sameBits(samples, expected));
}

TEST(FlatScreenSampling, RowIsAnyNumber) {
    for (const int row : {0, -1, kMinInt, kMaxInt}) {
        Samples samples;
        FlatScreen(4.0, 3.0).sampleHorizontally(0.5, 1.0, 0.0, 2, row, samples, false);
        const Samples expected{{{0, row}, Point3(2, 0, 0)}, {{1, row}, Point3(-2, 0, 0)}};
        EXPECT_TRUE(sameBits(samples, expected));
    }
}

TEST(FlatScreenSampling, CalibrationPointsRunColumnByColumnFromTopToBottom) {
    const std::vector expected{Point3(-2, 0, 1.5), Point3(-2, 0, 0), Point3(-2, 0, -1.5),
                               Point3(2, 0, 1.5),  Point3(2, 0, 0),  Point3(2, 0, -1.5)};
    EXPECT_TRUE(sameBits(FlatScreen(4.0, 3.0).getDefaultCalibrationPoints(2, 3), expected));
}

TEST(FlatScreenSampling, CalibrationPointsOfNoColumnsOrRowsAreNone) {
    const FlatScreen screen(4.0, 3.0);
    for (const int none : {0, -1, kMinInt}) {
        for (const int other : {kMinInt, -5, 0, 1, 5, kMaxInt}) {
            EXPECT_TRUE(screen.getDefaultCalibrationPoints(none, other).empty());
            EXPECT_TRUE(screen.getDefaultCalibrationPoints(other, none).empty());
        }
    }
}

TEST(FlatScreenSampling, OneColumnOrRowOfCalibrationPointsIsNaN) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(sameBits(screen.getDefaultCalibrationPoints(1, 1), std::vector{Point3(nan, 0, nan)}));
    EXPECT_TRUE(sameBits(screen.getDefaultCalibrationPoints(1, 2),
                         std::vector{Point3(nan, 0, 1.5), Point3(nan, 0, -1.5)}));
    EXPECT_TRUE(sameBits(screen.getDefaultCalibrationPoints(2, 1),
                         std::vector{Point3(-2, 0, nan), Point3(2, 0, nan)}));
}

TEST(FlatScreenSampling, CalibrationPointsLieEvenlyOverTheRectangle) {
    constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double w = rng.uniform(0.1, 50.0);
        const double h = rng.uniform(0.1, 50.0);
        const int columns = rng.integer(2, 12);
        const int rows = rng.integer(2, 12);
        const auto points = FlatScreen(w, h).getDefaultCalibrationPoints(columns, rows);
        ASSERT_EQ(points.size(), static_cast<std::size_t>(columns * rows));
        std::size_t next = 0;
        for (int column = 0; column < columns; ++column) {
            for (int row = 0; row < rows; ++row, ++next) {
                const long double x = w * (static_cast<long double>(column) / (columns - 1) - 0.5L);
                const long double z = h * (0.5L - static_cast<long double>(row) / (rows - 1));
                // Half an epsilon of the size each for the quotient, the product and the
                // difference.
                EXPECT_LE(std::abs(points[next][0] - x), 2.0L * kEpsilon * w);
                EXPECT_EQ(points[next][1], 0.0);
                EXPECT_LE(std::abs(points[next][2] - z), 2.0L * kEpsilon * h);
            }
        }
    }
}
