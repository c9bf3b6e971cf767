#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "Library/Search/RegionMapCases.h"
#include "Reference/Mesh/ReferenceRegionMap.h"

using namespace quarn::test;

namespace {

const Triangle* locatedIn(const ReferenceRegionMap& map, double u, double v) {
    std::optional<const Triangle*> result;
    map.locate(static_cast<int>(map.nodes.size()) - 1, map.rootRect, u, v, result);
    return result.value_or(nullptr);
}

bool isInside(const RegionRect& rect, const UV& uv) {
    return rect.minU <= uv[0] && uv[0] <= rect.maxU && rect.minV <= uv[1] && uv[1] <= rect.maxV;
}

// By rounding a triangle may claim a point an ulp beyond its box, where the map need not look for
// it.
bool isHeldByAny(const std::vector<Triangle>& triangles, const UV& uv) {
    for (const Triangle& triangle : triangles)
        if (isInside(boxOf(triangle), uv) && holdsPoint(triangle, uv[0], uv[1])) return true;
    return false;
}

// A point anywhere, on a line that splits a node, at a corner, or on an edge of a triangle.
UV question(Rng& rng, const std::vector<Triangle>& triangles, const RegionRect& rect) {
    const int kind = triangles.empty() ? 0 : rng.integer(0, 3);
    if (kind == 0) return uvAround(rng, {0.5, 0.5}, 0.7);
    if (kind == 1) {
        const double u = rect.minU + (rect.maxU - rect.minU) * rng.integer(0, 16) / 16.0;
        return {u, rect.minV + (rect.maxV - rect.minV) * rng.integer(0, 16) / 16.0};
    }
    const auto& vertices =
        triangles[static_cast<std::size_t>(rng.integer(0, static_cast<int>(triangles.size()) - 1))].vertices;
    const int corner = rng.integer(0, 2);
    const UV& from = vertices[static_cast<std::size_t>(corner)].uv;
    if (kind == 2) return from;
    const UV& to = vertices[static_cast<std::size_t>((corner + 1) % 3)].uv;
    return from + (to - from) * (rng.integer(0, 8) / 8.0);
}

class RegionMapLocate : public ::testing::TestWithParam<Soup> {};

}  // namespace

TEST_P(RegionMapLocate, AnswersLikeTheReferenceAndAScan) {
    int held = 0;
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<Triangle> earlier = trianglesOf(anySoup(rng), rng, 30);
        const std::vector<Triangle> triangles = trianglesOf(GetParam(), rng);
        RegionMap map;
        ReferenceRegionMap plain;
        rebuildOver(map, earlier);
        rebuildOver(map, triangles);
        plain.rebuild(triangles);
        for (int j = 0; j < 60; ++j) {
            const UV uv = question(rng, triangles, map.rootRect());
            const Triangle* const located = locatedIn(map, uv[0], uv[1]);
            ASSERT_EQ(located, locatedIn(plain, uv[0], uv[1]));
            if (located != nullptr) {
                ++held;
                ASSERT_TRUE(holdsPoint(*located, uv[0], uv[1]));
            } else if (isInside(map.rootRect(), uv)) {
                ASSERT_FALSE(isHeldByAny(triangles, uv));
            }
        }
    }
    const bool hasArea = GetParam() != Soup::Degenerate && GetParam() != Soup::OnOneLine;
    EXPECT_EQ(held > 0, hasArea);
}

INSTANTIATE_TEST_SUITE_P(AllSoups, RegionMapLocate,
                         ::testing::Values(Soup::Grid, Soup::Small, Soup::Overlapping, Soup::Degenerate,
                                           Soup::OnOneLine, Soup::OneRegion, Soup::AroundOnePoint));

// Coordinates of a grid by powers of two are exact, so that no point of the square is in no
// triangle.
TEST(RegionMapLocateOnGrid, EveryPointOfTheSquareIsFound) {
    const std::vector<Triangle> grid = gridOver(16, 8);
    RegionMap map;
    rebuildOver(map, grid);
    for (int i = 0; i <= 64; ++i) {
        for (int j = 0; j <= 64; ++j) {
            const double u = i / 64.0;
            const double v = j / 64.0;
            const Triangle* const located = locatedIn(map, u, v);
            ASSERT_NE(located, nullptr) << u << ' ' << v;
            ASSERT_TRUE(isInside(boxOf(*located), {u, v})) << u << ' ' << v;
        }
    }
}

TEST(RegionMapLocateOnGrid, NoPointWithANaNIsFound) {
    const std::vector<Triangle> grid = gridOver(16, 8);
    RegionMap map;
    rebuildOver(map, grid);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(locatedIn(map, nan, 0.1), nullptr);
    EXPECT_EQ(locatedIn(map, 0.1, nan), nullptr);
    EXPECT_EQ(locatedIn(map, nan, nan), nullptr);
}

TEST(RegionMapLocateAnywhere, MeshWithSpecialCoordinatesIsQueriedForAnyPoint) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<Triangle> triangles = trianglesOf(Soup::Special, rng);
        RegionMap map;
        ReferenceRegionMap plain;
        rebuildOver(map, triangles);
        plain.rebuild(triangles);
        for (const double u : kSpecialValues) {
            for (const double v : kSpecialValues) ASSERT_EQ(locatedIn(map, u, v), locatedIn(plain, u, v));
            ASSERT_EQ(locatedIn(map, u, 0.4), locatedIn(plain, u, 0.4));
            ASSERT_EQ(locatedIn(map, 0.4, u), locatedIn(plain, 0.4, u));
        }
    }
}
