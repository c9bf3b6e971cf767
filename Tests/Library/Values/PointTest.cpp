#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/Rng.h"

using namespace quarn::test;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// Half a unit in the last place of 1.0: the greatest relative error of one operation.
constexpr long double kRoundoff = 0x1p-53L;

}  // namespace

TEST(Point, IsZeroByDefault) {
    EXPECT_TRUE(sameBits(Point3(), Point3(0.0, 0.0, 0.0)));
    EXPECT_TRUE(sameBits(Point2(), Point2(0.0, 0.0)));
    EXPECT_EQ((Point<int, 2>()), (Point<int, 2>(0, 0)));
}

TEST(Point, CoordinatesAreReadAndWrittenByIndex) {
    Point3 p(1.0, 2.0, 3.0);
    p[1] = -7.0;
    EXPECT_EQ(p[0], 1.0);
    EXPECT_EQ(p[1], -7.0);
    EXPECT_EQ(p[2], 3.0);
}

TEST(Point, ArithmeticIsPerCoordinate) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        const Point3 a = randomPoint(rng, exponents);
        const Point3 b = randomPoint(rng, exponents);
        const double s = rng.spread(exponents.low, exponents.high);
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_TRUE(sameBits((a + b)[k], a[k] + b[k]));
            EXPECT_TRUE(sameBits((a - b)[k], a[k] - b[k]));
            EXPECT_TRUE(sameBits((a * s)[k], a[k] * s));
            EXPECT_TRUE(sameBits((s * a)[k], s * a[k]));
            EXPECT_TRUE(sameBits((a / s)[k], a[k] / s));
        }
    }
}

TEST(Point, ScalarMayBeAnInteger) {
    EXPECT_EQ(Point3(1.0, 2.0, 3.0) * 2, Point3(2.0, 4.0, 6.0));
    EXPECT_EQ(2 * Point3(1.0, 2.0, 3.0), Point3(2.0, 4.0, 6.0));
    EXPECT_EQ(Point3(1.0, 2.0, 3.0) / 2, Point3(0.5, 1.0, 1.5));
    EXPECT_EQ((Point<int, 2>(7, -7) / 2), (Point<int, 2>(3, -3)));
}

TEST(Point, ProductsAndLengthsAreTheScalarOnes) {
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        const Point3 a = randomPoint(rng, exponents);
        const Point3 b = randomPoint(rng, exponents);
        EXPECT_TRUE(sameBits(dot(a, b), reference::dot(plain(a), plain(b))));
        EXPECT_TRUE(sameBits(cross(a, b), point(reference::cross(plain(a), plain(b)))));
        EXPECT_TRUE(sameBits(length(a), reference::length(plain(a))));
        EXPECT_TRUE(sameBits(normalized(a), point(reference::normalized(plain(a)))));
    }
}

TEST(Point, DotAddsUpFromZeroInIndexOrder) {
    // 1e16 + 1 rounds back to 1e16, so every other order gives another sum.
    EXPECT_EQ(dot(Point3(1e16, 1.0, -1e16), Point3(1.0, 1.0, 1.0)), 0.0);
    EXPECT_EQ(dot(Point3(1e16, -1e16, 1.0), Point3(1.0, 1.0, 1.0)), 1.0);
    // From 0.0: three negative zeros make a positive one.
    EXPECT_TRUE(sameBits(dot(Point3(-0.0, -0.0, -0.0), Point3(1.0, 1.0, 1.0)), 0.0));
}

TEST(Point, ProductsOfIntegersAreExact) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::array<std::int64_t, 6> n{};
        for (std::int64_t& x : n) x = rng.integer(-30000000, 30000000);
        const auto [ax, ay, az, bx, by, bz] = n;
        const auto number = [](std::int64_t x) { return static_cast<double>(x); };
        const Point3 a(number(ax), number(ay), number(az));
        const Point3 b(number(bx), number(by), number(bz));
        EXPECT_EQ(dot(a, b), number(ax * bx + ay * by + az * bz));
        EXPECT_EQ(cross(a, b),
                  Point3(number(ay * bz - az * by), number(az * bx - ax * bz), number(ax * by - ay * bx)));
        EXPECT_EQ(cross(a, b), -1.0 * cross(b, a));
    }
}

TEST(Point, CrossIsRightHanded) {
    const Point3 x(1.0, 0.0, 0.0);
    const Point3 y(0.0, 1.0, 0.0);
    const Point3 z(0.0, 0.0, 1.0);
    EXPECT_EQ(cross(x, y), z);
    EXPECT_EQ(cross(y, z), x);
    EXPECT_EQ(cross(z, x), y);
}

TEST(Point, LengthIsTheEuclideanOneWithinRounding) {
    // Three roundings of the squares and sums, halved by the root, and the root's own: 2.5, and
    // some slack.
    constexpr long double kTolerance = 2.6L * kRoundoff;
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 a = rng.spreadPoint(-500, 500);
        const long double x = a[0];
        const long double y = a[1];
        const long double z = a[2];
        const long double exact = std::sqrt(x * x + y * y + z * z);
        EXPECT_LE(std::abs(length(a) - exact), kTolerance * exact);
        // One more rounding: the quotient's.
        EXPECT_LE(std::abs(normalized(a)[0] - x / exact), 3.7L * kRoundoff * std::abs(x / exact));
    }
    EXPECT_EQ(length(Point3(2.0, 3.0, 6.0)), 7.0);
    EXPECT_EQ(length(Point2(3.0, 4.0)), 5.0);
}

TEST(Point, LengthOfAHugeVectorOverflows) {
    // The squares do, although the length itself is a number.
    EXPECT_EQ(length(Point3(1e200, 0.0, 0.0)), std::numeric_limits<double>::infinity());
    EXPECT_EQ(length(Point3(1e-200, 0.0, 0.0)), 0.0);
}

TEST(Point, NormalisedZeroIsNaN) {
    const Point3 n = normalized(Point3());
    EXPECT_TRUE(std::isnan(n[0]) && std::isnan(n[1]) && std::isnan(n[2]));
}

TEST(Point, NormalisingDividesByTheLength) {
    // A product with the reciprocal would give another last bit for some.
    int reciprocalDiffers = 0;
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 a = rng.point(-1.0, 1.0);
        EXPECT_EQ(normalized(a)[0], a[0] / length(a));
        if (normalized(a)[0] != a[0] * (1.0 / length(a))) ++reciprocalDiffers;
    }
    EXPECT_GT(reciprocalDiffers, 0);
}

TEST(Point, WithANaNIsUnequalToItself) {
    for (std::size_t k = 0; k < 3; ++k) {
        Point3 p(1.0, 2.0, 3.0);
        p[k] = kNaN;
        EXPECT_TRUE(p != p);
        EXPECT_FALSE(p == p);
        EXPECT_TRUE(p != Point3());
    }
}
