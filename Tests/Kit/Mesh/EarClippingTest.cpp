#include <QuarnKit/Mesh/EarClipping.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include <QuarnKit/Mesh/DegenerateTriangles.h>
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using Position = Point<double, 3>;
using Polygon = std::vector<Position>;

constexpr double kTwoPi = 2.0 * std::numbers::pi;

// A polygon in the plane y = 0 by x and z, counterclockwise for a viewer at -Y.
Polygon flat(const std::vector<std::pair<double, double>>& corners) {
    Polygon polygon;
    for (const auto& [x, z] : corners) polygon.emplace_back(x, 0.0, z);
    return polygon;
}

Position asFloats(const Position& position) {
    return {static_cast<float>(position[0]), static_cast<float>(position[1]),
            static_cast<float>(position[2])};
}

Position areaVector(const Polygon& polygon) {
    Position sum;
    for (std::size_t i = 0; i < polygon.size(); ++i)
        sum = sum + cross(polygon[i] - polygon[0], polygon[(i + 1) % polygon.size()] - polygon[0]) * 0.5;
    return sum;
}

// Expects triangles that cover a polygon of an area: none is flipped, and their areas add up.
void expectTriangulation(const Polygon& polygon, double area, double tolerance = 1e-12) {
    const std::vector<PolygonTriangle> triangles = clipEars(polygon);
    ASSERT_EQ(triangles.size(), polygon.size() - 2);
    const Position normal = areaVector(polygon) / length(areaVector(polygon));
    double sum = 0.0;
    std::vector<bool> isUsed(polygon.size());
    for (const auto& [a, b, c] : triangles) {
        std::array corners{polygon[a], polygon[b], polygon[c]};
        for (Position& corner : corners) corner = corner - normal * dot(corner, normal);
        const double part = dot(cross(corners[1] - corners[0], corners[2] - corners[0]), normal) / 2.0;
        EXPECT_TRUE(part > 0.0 || isDegenerateTriangle(corners)) << a << " " << b << " " << c;
        sum += std::abs(part);
        isUsed[a] = isUsed[b] = isUsed[c] = true;
    }
    EXPECT_NEAR(sum, area, tolerance * area);
    for (std::size_t i = 0; i < polygon.size(); ++i) EXPECT_TRUE(isUsed[i]) << i;
}

std::size_t degenerateCount(const Polygon& polygon) {
    std::size_t count = 0;
    for (const auto& [a, b, c] : clipEars(polygon))
        count += isDegenerateTriangle(std::array{polygon[a], polygon[b], polygon[c]}) ? 1U : 0U;
    return count;
}

TEST(EarClipping, FanOfConvexPolygonsIsNotFolded) {
    EXPECT_FALSE(isFanFolded(flat({{0, 0}, {1, 0}, {1, 1}})));
    EXPECT_FALSE(isFanFolded(flat({{0, 0}, {1, 0}, {1, 1}, {0, 1}})));
    EXPECT_FALSE(isFanFolded(flat({{0, 0}, {1, 0}, {2, 0}, {2, 1}, {1, 1}, {0, 1}})));
    EXPECT_FALSE(isFanFolded(flat({{0, 0}, {1, 0}, {1, 0}, {0, 1}})));
    Polygon circle;
    for (int i = 0; i < 100; ++i)
        circle.push_back(
            asFloats({3.0 * std::cos(i * kTwoPi / 100.0), 3.0 * std::sin(i * kTwoPi / 100.0), 7}));
    EXPECT_FALSE(isFanFolded(circle));
}

TEST(EarClipping, FanFoldsUnlessItsCornerSeesTheWholePolygon) {
    const Polygon dart = flat({{0, 1}, {-2, -2}, {0, 0}, {2, -2}});  // the third corner is reflex
    for (std::size_t first = 0; first < dart.size(); ++first) {
        Polygon polygon = dart;
        std::rotate(polygon.begin(), polygon.begin() + static_cast<std::ptrdiff_t>(first), polygon.end());
        EXPECT_EQ(isFanFolded(polygon), first % 2 == 1) << first;
        expectTriangulation(polygon, 2.0);
    }
}

TEST(EarClipping, FoldWithinRoundingDoesNotCount) {
    EXPECT_FALSE(isFanFolded(flat({{0, 0}, {1, 1e-8}, {2, 0}, {2, 1}})));
    EXPECT_TRUE(isFanFolded(flat({{0, 0}, {1, 0.2}, {2, 0}, {2, 1}})));
    // Near 5e6 floats are 0.5 apart.
    EXPECT_FALSE(isFanFolded(flat({{5e6, 0}, {5e6 + 1, 0.2}, {5e6 + 2, 0}, {5e6 + 2, 1}})));
}

TEST(EarClipping, ShapesHaveTheirAreas) {
    expectTriangulation(flat({{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}}), 3.0);
    expectTriangulation(flat({{0, 0}, {5, 0}, {5, 3}, {4, 3}, {4, 1}, {1, 1}, {1, 3}, {0, 3}}), 9.0);
    expectTriangulation(
        flat(
            {{0, 0}, {6, 0}, {6, 5}, {1, 5}, {1, 2}, {4, 2}, {4, 3}, {2, 3}, {2, 4}, {5, 4}, {5, 1}, {0, 1}}),
        18.0);
    Polygon comb = flat({{0, 0}, {100, 0}});
    for (int tooth = 50; tooth-- > 0;) {
        comb.emplace_back(2.0 * tooth + 2.0, 0.0, 1.0);
        comb.emplace_back(2.0 * tooth + 1.0, 0.0, 9.0);
        comb.emplace_back(2.0 * tooth, 0.0, 1.0);
    }
    expectTriangulation(comb, 100.0 + 50.0 * 8.0);
}

TEST(EarClipping, RandomStarShapedPolygonsHaveTheirAreas) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const int count = rng.integer(4, 60);
        const Position right = rng.point(-1.0, 1.0);
        const Position normal = cross(right, rng.point(-1.0, 1.0));
        const Position up = cross(normal, right) / length(normal);
        const Position center = rng.point(-20.0, 20.0);
        Polygon polygon;
        double area = 0.0;
        std::vector<double> radii;
        for (int k = 0; k < count; ++k) {
            radii.push_back(rng.uniform(0.2, 5.0));
            const double angle = kTwoPi * k / count;
            polygon.push_back(center + right * (radii.back() * std::cos(angle)) +
                              up * (radii.back() * std::sin(angle)));
        }
        for (std::size_t k = 0; k < radii.size(); ++k)
            area += radii[k] * radii[(k + 1) % radii.size()] * std::sin(kTwoPi / count) / 2.0;
        expectTriangulation(polygon, area * dot(right, right), 1e-9);
        for (Position& corner : polygon) corner = asFloats(corner);
        expectTriangulation(polygon, length(areaVector(polygon)), 1e-6);
        if (HasFailure()) return;
    }
}

TEST(EarClipping, PolygonsOffTheirPlaneAreTriangulatedInIt) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Polygon polygon;
        const int count = rng.integer(4, 30);
        for (int k = 0; k < count; ++k) {
            const double radius = rng.uniform(0.5, 5.0);
            polygon.emplace_back(radius * std::cos(kTwoPi * k / count), radius * std::sin(kTwoPi * k / count),
                                 rng.uniform(-0.1, 0.1));
        }
        expectTriangulation(polygon, length(areaVector(polygon)));
        if (HasFailure()) return;
    }
}

TEST(EarClipping, HoleThatABridgeJoinsStaysOpen) {
    const Polygon frame =
        flat({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {1, 1}, {1, 3}, {3, 3}, {3, 1}, {1, 1}});
    for (std::size_t first = 0; first < frame.size(); ++first) {
        Polygon polygon = frame;
        std::rotate(polygon.begin(), polygon.begin() + static_cast<std::ptrdiff_t>(first), polygon.end());
        expectTriangulation(polygon, 12.0);
    }
}

TEST(EarClipping, CornersMayTouch) {
    expectTriangulation(flat({{0, 0}, {2, 0}, {1, 1}, {2, 2}, {0, 2}, {1, 1}}), 2.0);
    // Edges that run out and back.
    expectTriangulation(flat({{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 6}, {2, 4}, {0, 4}, {1, 2}}), 14.0);
    expectTriangulation(flat({{0, 0}, {1, 0}, {1, 0}, {1, 1}, {0.75, 0.25}, {0, 1}}), 0.625);
}

TEST(EarClipping, CornersOnEdgesGiveNoDegenerateTriangles) {
    EXPECT_EQ(degenerateCount(flat({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {0, 1}})), 0U);
    EXPECT_EQ(degenerateCount(flat({{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {1, 1}, {0, 1}})), 0U);
    EXPECT_EQ(degenerateCount(flat({{0, 0}, {3, 0}, {2, 1}, {1, 2}, {0, 3}, {0, 2}, {0, 1}})), 0U);
}

TEST(EarClipping, CrossedPolygonsHaveNoTriangles) {
    for (const Polygon& polygon :
         {flat({{0, 0}, {1, 0}, {0, 1}, {1, 1}}), flat({{0, 0}, {3, 0}, {0, 1}, {1, 1}}),
          flat({{0, 0}, {0, 3}, {2, 1}, {2, 2}})}) {
        EXPECT_TRUE(isFanFolded(polygon));
        EXPECT_TRUE(clipEars(polygon).empty());
    }
}

TEST(EarClipping, RandomCornersGiveTrianglesOfOneSideOrNone) {
    int found = 0;
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Polygon polygon;
        const int count = rng.integer(4, 9);
        for (int k = 0; k < count; ++k)
            polygon.push_back(rng.coin() ? rng.point(-1.0, 1.0) : rng.integerPoint(-2, 2));
        const auto triangles = clipEars(polygon);
        if (triangles.empty()) continue;
        ++found;
        expectTriangulation(polygon, length(areaVector(polygon)), 1e-6);
        if (HasFailure()) return;
    }
    EXPECT_GT(found, 100);
}

TEST(EarClipping, PolygonsWithoutAreaHaveNoTriangles) {
    EXPECT_TRUE(clipEars(flat({{1, 1}, {1, 1}, {1, 1}, {1, 1}})).empty());
    EXPECT_FALSE(isFanFolded(flat({{1, 1}, {1, 1}, {1, 1}, {1, 1}})));
    EXPECT_FALSE(isFanFolded(flat({{0, 0}, {1, 0}, {3, 0}, {2, 0}})));
    EXPECT_TRUE(clipEars({}).empty());
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(clipEars(flat({{0, 0}, {1, 0}, {value, 1}, {0, 1}})).empty());
        EXPECT_FALSE(isFanFolded(flat({{0, 0}, {1, 0}, {value, 1}, {0, 1}})));
    }
}

TEST(EarClipping, NumberOfCornersIsLimited) {
    Polygon star;
    for (std::size_t i = 0; i < kMaxClippedCorners; ++i) {
        const double angle = kTwoPi * static_cast<double>(i) / kMaxClippedCorners;
        star.emplace_back((1.0 + static_cast<double>(i % 2)) * std::cos(angle),
                          (1.0 + static_cast<double>(i % 2)) * std::sin(angle), 0.0);
    }
    EXPECT_EQ(clipEars(star).size(), kMaxClippedCorners - 2);
    star.push_back(star.back() + Position(0.0, 1e-3, 0.0));
    EXPECT_TRUE(clipEars(star).empty());
}

}  // namespace
}  // namespace quarn::test
