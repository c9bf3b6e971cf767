#include <QuarnKit/Compare/TriangleDistance.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

using Point3 = Point<double, 3>;

using Precise = std::array<long double, 3>;

Precise at(const TriangleCorners& triangle, long double a, long double b) {
    Precise position{};
    for (std::size_t i = 0; i < 3; ++i)
        position[i] = triangle[0][i] + a * (triangle[1][i] - static_cast<long double>(triangle[0][i])) +
                      b * (triangle[2][i] - static_cast<long double>(triangle[0][i]));
    return position;
}

long double product(const Precise& a, const Precise& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Precise difference(const Precise& to, const Precise& from) {
    return {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
}

// Returns the minimum distance to the corners, to the projections on the edges, and to the
// projection on the plane by least squares. All of them are in the triangle, so that the result is
// never too small.
double referenceDistance(const Point3& point, const TriangleCorners& triangle) {
    const Precise precisePoint{point[0], point[1], point[2]};
    long double least = INFINITY;
    const auto take = [&](long double a, long double b) {
        if (!(a >= 0.0L && b >= 0.0L && a + b <= 1.0L)) return;
        const Precise way = difference(at(triangle, a, b), precisePoint);
        least = std::min(least, product(way, way));
    };
    const std::array<std::array<long double, 2>, 3> corners{{{0.0L, 0.0L}, {1.0L, 0.0L}, {0.0L, 1.0L}}};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto& [fromA, fromB] = corners.at(i);
        const auto& [toA, toB] = corners.at((i + 1) % 3);
        take(fromA, fromB);
        const Precise from = at(triangle, fromA, fromB);
        const Precise edge = difference(at(triangle, toA, toB), from);
        const long double t = product(difference(precisePoint, from), edge) / product(edge, edge);
        take(fromA + t * (toA - fromA), fromB + t * (toB - fromB));
    }
    const Precise origin = at(triangle, 0.0L, 0.0L);
    const Precise edge1 = difference(at(triangle, 1.0L, 0.0L), origin);
    const Precise edge2 = difference(at(triangle, 0.0L, 1.0L), origin);
    const Precise way = difference(precisePoint, origin);
    const long double mixed = product(edge1, edge2);
    const long double determinant = product(edge1, edge1) * product(edge2, edge2) - mixed * mixed;
    const long double right1 = product(way, edge1);
    const long double right2 = product(way, edge2);
    take((right1 * product(edge2, edge2) - right2 * mixed) / determinant,
         (right2 * product(edge1, edge1) - right1 * mixed) / determinant);
    return static_cast<double>(std::sqrt(least));
}

void expectPlainDistance(const Point3& point, const TriangleCorners& triangle) {
    const Point3 nearest = nearestOnTriangle(point, triangle);
    EXPECT_NEAR(length(point - nearest), referenceDistance(point, triangle), 1e-7);
    EXPECT_LE(referenceDistance(nearest, triangle), 1e-7);
}

TEST(TriangleDistance, IsThatToTheFootTheEdgeOrTheCorner) {
    const TriangleCorners triangle{Point3(0, 0, 0), Point3(4, 0, 0), Point3(0, 4, 0)};
    EXPECT_EQ(nearestOnTriangle({1, 1, 5}, triangle), Point3(1, 1, 0));
    EXPECT_EQ(nearestOnTriangle({1, 1, 0}, triangle), Point3(1, 1, 0));
    EXPECT_EQ(nearestOnTriangle({2, -3, 1}, triangle), Point3(2, 0, 0));
    EXPECT_EQ(nearestOnTriangle({-1, 2, 0}, triangle), Point3(0, 2, 0));
    EXPECT_EQ(nearestOnTriangle({3, 3, 0}, triangle), Point3(2, 2, 0));
    EXPECT_EQ(nearestOnTriangle({-1, -2, 3}, triangle), Point3(0, 0, 0));
    EXPECT_EQ(nearestOnTriangle({9, -1, 0}, triangle), Point3(4, 0, 0));
    EXPECT_EQ(nearestOnTriangle({-1, 9, 0}, triangle), Point3(0, 4, 0));
    EXPECT_EQ(squaredDistance({1, 1, 5}, triangle), 25.0);
}

TEST(TriangleDistance, OfACornerIsNothing) {
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleCorners triangle{rng.point(-1, 1), rng.point(-1, 1), rng.point(-1, 1)};
        for (const Point3& corner : triangle) ASSERT_LE(squaredDistance(corner, triangle), 1e-30);
    }
}

TEST(TriangleDistance, OfRandomTrianglesIsThatOfTheReference) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        expectPlainDistance(rng.point(-2, 2), {rng.point(-1, 1), rng.point(-1, 1), rng.point(-1, 1)});
    }
}

TEST(TriangleDistance, OfThinTrianglesIsThatOfTheReference) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 a = rng.point(-1, 1);
        const Point3 b = rng.point(-1, 1);
        const double width = std::ldexp(1.0, -rng.integer(5, 60));
        const Point3 c = a + (b - a) * rng.uniform(-0.5, 1.5) + rng.point(-width, width);
        expectPlainDistance(rng.point(-2, 2), {a, b, c});
    }
}

TEST(TriangleDistance, OfTrianglesWithoutAreaIsThatToTheEdgeOrThePosition) {
    const Point3 a(1, 2, 3);
    const Point3 b(1, 2, 7);
    EXPECT_EQ(nearestOnTriangle({4, 6, 3}, {a, a, a}), a);
    for (const TriangleCorners& edge : {TriangleCorners{a, a, b}, TriangleCorners{a, b, a},
                                        TriangleCorners{b, a, a}, TriangleCorners{a, b, b}})
        EXPECT_EQ(squaredDistance({4, 6, 5}, edge), 25.0);
    EXPECT_EQ(squaredDistance({4, 6, 5}, {a, Point3(1, 2, 5), b}), 25.0);
}

TEST(TriangleDistance, FollowsTheSizeOfTheTriangle) {
    const TriangleCorners triangle{Point3(0, 0, 0), Point3(4, 0, 0), Point3(0, 4, 0)};
    for (const double factor : {1e-30, 1e-6, 1e6, 1e37}) {
        TriangleCorners scaled = triangle;
        for (Point3& corner : scaled) corner = corner * factor;
        EXPECT_NEAR(std::sqrt(squaredDistance(Point3(1, 1, 5) * factor, scaled)) / factor, 5.0, 1e-12);
        EXPECT_NEAR(std::sqrt(squaredDistance(Point3(7, -4, 0) * factor, scaled)) / factor, 5.0, 1e-12);
    }
}

}  // namespace
}  // namespace quarn::test
