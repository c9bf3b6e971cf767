#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "Support/Conversions.h"
#include "Support/SpecialValues.h"

using namespace quarn::test;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool holdsNaN(const Point2& p) {
    return std::isnan(p[0]) || std::isnan(p[1]);
}

std::vector<Point2> allSpecialPairs() {
    std::vector<Point2> pairs;
    for (const double x : kSpecialValues)
        for (const double y : kSpecialValues) pairs.emplace_back(x, y);
    return pairs;
}

}  // namespace

TEST(PointOrder, FirstDifferentCoordinateDecides) {
    EXPECT_TRUE(Point3(1.0, 9.0, 9.0) < Point3(2.0, 0.0, 0.0));
    EXPECT_TRUE(Point3(1.0, 1.0, 9.0) < Point3(1.0, 2.0, 0.0));
    EXPECT_TRUE(Point3(1.0, 1.0, 1.0) < Point3(1.0, 1.0, 2.0));
    EXPECT_FALSE(Point3(2.0, 0.0, 0.0) < Point3(1.0, 9.0, 9.0));
    EXPECT_FALSE(Point3(1.0, 1.0, 1.0) < Point3(1.0, 1.0, 1.0));
}

TEST(PointOrder, NegativeZeroEqualsZero) {
    EXPECT_TRUE(Point2(-0.0, 1.0) == Point2(0.0, 1.0));
    EXPECT_FALSE(Point2(-0.0, 1.0) < Point2(0.0, 1.0));
    EXPECT_TRUE(Point2(0.0, 1.0) < Point2(-0.0, 2.0));
}

TEST(PointOrder, NaNEndsTheComparisonWithNotLess) {
    // The second coordinates would decide if the first were skipped.
    EXPECT_FALSE(Point2(kNaN, 1.0) < Point2(0.0, 2.0));
    EXPECT_FALSE(Point2(0.0, 1.0) < Point2(kNaN, 2.0));
    EXPECT_FALSE(Point2(kNaN, 1.0) < Point2(kNaN, 2.0));
    EXPECT_FALSE(Point2(1.0, kNaN) < Point2(1.0, 2.0));
    // A NaN after the deciding coordinate is not reached.
    EXPECT_TRUE(Point2(1.0, kNaN) < Point2(2.0, kNaN));
    EXPECT_FALSE(Point2(kInfinity, 0.0) < Point2(kInfinity, 0.0));
}

TEST(PointOrder, EqualityIsThatOfEachCoordinate) {
    for (const Point2& a : allSpecialPairs())
        for (const Point2& b : allSpecialPairs()) {
            const bool differ =
                holdsNaN(a) || holdsNaN(b) || a[0] < b[0] || a[0] > b[0] || a[1] < b[1] || a[1] > b[1];
            EXPECT_EQ(a != b, differ);
            EXPECT_EQ(a == b, !differ);
        }
}

TEST(PointOrder, IsTheLexicographicOneWithoutNaN) {
    for (const Point2& a : allSpecialPairs())
        for (const Point2& b : allSpecialPairs()) {
            if (holdsNaN(a) || holdsNaN(b)) continue;
            const reference::Vec2 x = plain(a);
            const reference::Vec2 y = plain(b);
            EXPECT_EQ(a < b, std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end()));
        }
}

TEST(PointOrder, SortsLikeTheCoordinatesDo) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<Point<int, 2>> keys;
        std::vector<int> codes;
        for (int k = 0; k < 50; ++k) {
            const int column = rng.integer(-3, 3);
            const int row = rng.integer(-3, 3);
            keys.emplace_back(column, row);
            codes.push_back(10 * column + row);
        }
        std::sort(keys.begin(), keys.end());
        std::sort(codes.begin(), codes.end());
        for (std::size_t k = 0; k < keys.size(); ++k) EXPECT_EQ(10 * keys[k][0] + keys[k][1], codes[k]);
    }
}

TEST(PointOrder, ExactlyOneOfLessEqualGreaterHolds) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 a = rng.spreadPoint();
        Point3 b = rng.spreadPoint();
        // Let the first coordinates agree now and then, so that later ones decide.
        for (std::size_t k = 0; k < 3 && rng.coin(); ++k) b[k] = a[k];
        EXPECT_EQ(static_cast<int>(a < b) + static_cast<int>(b < a) + static_cast<int>(a == b), 1);
    }
}
