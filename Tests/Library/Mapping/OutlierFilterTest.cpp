// The mean of the positions that agree.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QuarnScreen/Detail/Mesh/OutlierFilter.h>

#include "Reference/Mesh/ReferenceMapping.h"
#include "Support/GeometryBits.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;
using quarn::detail::filterOutliersAndAverage;

namespace {

using Points = std::vector<Point3>;

constexpr int kMaxPoints = 40;

// Both ways must keep the same positions in the same order.
void compareWithReference(int keep, const Points& points) {
    SCOPED_TRACE(::testing::Message() << points.size() << " positions, " << keep << " kept");
    Points kept = points;
    Points expected = points;
    const Point3 mean = quarn::detail::filterOutliersAndAverage(keep, kept);
    EXPECT_TRUE(sameBits(mean, referenceFilterOutliers(keep, expected)));
    EXPECT_TRUE(sameBits(kept, expected));
}

// All sizes, each with numbers to keep from none to more than there are.
template <class Make>
void compareAllSizes(int rounds, Make make) {
    for (int i = 0; i < rounds; ++i)
        for (int size = 0; size <= kMaxPoints; ++size) {
            Rng rng(i * (kMaxPoints + 1) + size);
            SCOPED_TRACE(i);
            Points points;
            for (int k = 0; k < size; ++k) points.push_back(make(rng));
            for (const int keep : {0, 1, size / 2, size - 1, size, size + 3, rng.integer(0, kMaxPoints)})
                if (keep >= 0) compareWithReference(keep, points);
            if (::testing::Test::HasFailure()) return;
        }
}

Points alongX(const std::vector<double>& xs) {
    Points points;
    for (const double x : xs) points.emplace_back(x, 0.0, 0.0);
    return points;
}

}  // namespace

TEST(OutlierFilter, MeanOfNothingIsNaN) {
    Points points;
    for (const int keep : {0, 1, 15}) {
        const Point3 mean = quarn::detail::filterOutliersAndAverage(keep, points);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(mean[i]));
    }
    points = alongX({1.0, 2.0});
    EXPECT_TRUE(std::isnan(quarn::detail::filterOutliersAndAverage(0, points)[0]));
    EXPECT_TRUE(points.empty());
}

TEST(OutlierFilter, WhereNoneHasToGoTheOrderStays) {
    const Points given = alongX({8.0, 1.0, 3.0});
    for (const int keep : {3, 4, 100}) {
        Points points = given;
        EXPECT_TRUE(sameBits(quarn::detail::filterOutliersAndAverage(keep, points), Point3(4.0, 0.0, 0.0)));
        EXPECT_TRUE(sameBits(points, given));
    }
}

// About 6.5 the 16 is the farthest, then about 10/3 the 9, which was the nearest at first.
TEST(OutlierFilter, MeanIsTakenAnewForEachThatGoes) {
    Points points = alongX({16.0, 0.0, 9.0, 1.0});
    EXPECT_TRUE(sameBits(quarn::detail::filterOutliersAndAverage(2, points), Point3(0.5, 0.0, 0.0)));
    EXPECT_TRUE(sameBits(points, alongX({1.0, 0.0})));
}

TEST(OutlierFilter, OfTwoPositionsTheLaterOneGoes) {
    Points points = alongX({8.0, 2.0});
    EXPECT_TRUE(sameBits(quarn::detail::filterOutliersAndAverage(1, points), Point3(8.0, 0.0, 0.0)));
    points = alongX({2.0, 8.0});
    EXPECT_TRUE(sameBits(quarn::detail::filterOutliersAndAverage(1, points), Point3(2.0, 0.0, 0.0)));
}

TEST(OutlierFilter, PositionsGoHoweverCloseTheyAre) {
    Points points(20, Point3(0.5, -0.25, 2.0));
    EXPECT_TRUE(sameBits(quarn::detail::filterOutliersAndAverage(8, points), Point3(0.5, -0.25, 2.0)));
    EXPECT_EQ(points.size(), 8U);
}

TEST(OutlierFilter, RandomPositions) {
    compareAllSizes(60, [](Rng& rng) { return rng.point(-1.0, 1.0); });
}

// Corners of cubes around the mean: many distances are equal, far beyond sixteen.
TEST(OutlierFilter, EqualDistancesKeepTheirOrder) {
    compareAllSizes(100, [](Rng& rng) { return rng.integerPoint(-1, 1); });
    for (int size = 0; size <= kMaxPoints; size += 2) {
        Points points;
        for (int k = 0; k < size; ++k) {
            Point3 point;
            point[static_cast<std::size_t>(k / 2 % 3)] = k % 2 == 0 ? 1.0 : -1.0;
            points.push_back(point);
        }
        for (int keep = 0; keep <= size; ++keep) compareWithReference(keep, points);
    }
}

TEST(OutlierFilter, PositionsOfAnyMagnitude) {
    compareAllSizes(60, [](Rng& rng) { return rng.spreadPoint(); });
    compareAllSizes(60, [](Rng& rng) { return rng.spreadPoint(-4, 4); });
}

TEST(OutlierFilter, PositionsThatAreNotFinite) {
    compareAllSizes(60, [](Rng& rng) { return wildPoint<3>(rng); });
    compareAllSizes(60, [](Rng& rng) {
        Point3 point = rng.point(-1.0, 1.0);
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        if (rng.integer(0, 15) == 0) point[1] = rng.coin() ? kInfinity : std::nan("");
        return point;
    });
}

TEST(OutlierFilter, PositionThatIsNoNumberGoesOnlyWhenItComesLast) {
    Points points = alongX({1.0, std::nan(""), 3.0, 5.0});
    const Point3 mean = quarn::detail::filterOutliersAndAverage(1, points);
    EXPECT_EQ(mean[0], 1.0);
    points = alongX({std::nan(""), 1.0, 3.0, 5.0});
    EXPECT_TRUE(std::isnan(quarn::detail::filterOutliersAndAverage(1, points)[0]));
}
