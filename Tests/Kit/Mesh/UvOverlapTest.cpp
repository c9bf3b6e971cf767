#include <QuarnKit/Mesh/UvOverlap.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Support/Rng.h"

using namespace quarn;
using namespace quarn::test;

namespace {

using UV = Point<double, 2>;

double areaOf(const std::vector<UV>& polygon) {
    double twice = 0.0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const UV& a = polygon[i];
        const UV& b = polygon[(i + 1) % polygon.size()];
        twice += a[0] * b[1] - a[1] * b[0];
    }
    return twice / 2.0;
}

// Area of what two triangles have in common: the one is cut along the lines of the other's edges.
double commonArea(const TriangleUVs& a, TriangleUVs b) {
    if (areaOf({b[0], b[1], b[2]}) < 0.0) std::swap(b[1], b[2]);
    std::vector<UV> polygon(a.begin(), a.end());
    for (std::size_t i = 0; i < 3; ++i) {
        const UV from = b[i];
        const UV along = b[(i + 1) % 3] - from;
        const auto side = [&](const UV& point) {
            return along[0] * (point[1] - from[1]) - along[1] * (point[0] - from[0]);
        };
        std::vector<UV> kept;
        for (std::size_t k = 0; k < polygon.size(); ++k) {
            const UV& p = polygon[k];
            const UV& q = polygon[(k + 1) % polygon.size()];
            const double sideP = side(p);
            const double sideQ = side(q);
            if (sideP >= 0.0) kept.push_back(p);
            if ((sideP > 0.0 && sideQ < 0.0) || (sideP < 0.0 && sideQ > 0.0))
                kept.push_back(p + (q - p) * (sideP / (sideP - sideQ)));
        }
        polygon = kept;
    }
    return std::abs(areaOf(polygon));
}

std::vector<std::uint32_t> overlapsByEachPair(const std::vector<TriangleUVs>& triangles) {
    // Corners on eighths give either no common area or far more than this.
    constexpr double kMinArea = 1e-9;
    std::vector<bool> doesOverlap(triangles.size());
    for (std::size_t a = 0; a < triangles.size(); ++a)
        for (std::size_t b = 0; b < a; ++b)
            if (commonArea(triangles[a], triangles[b]) > kMinArea) doesOverlap[a] = doesOverlap[b] = true;
    std::vector<std::uint32_t> found;
    for (std::uint32_t i = 0; i < doesOverlap.size(); ++i)
        if (doesOverlap[i]) found.push_back(i);
    return found;
}

bool isFlat(const TriangleUVs& triangle) {
    return areaOf({triangle[0], triangle[1], triangle[2]}) == 0.0;
}

// Small triangles whose corners are on eighths.
std::vector<TriangleUVs> trianglesOnEighths(Rng& rng, int count, int width) {
    std::vector<TriangleUVs> triangles;
    while (static_cast<int>(triangles.size()) < count) {
        const int u = rng.integer(0, width);
        const int v = rng.integer(0, width);
        TriangleUVs triangle;
        for (UV& corner : triangle) corner = {(u + rng.integer(0, 3)) / 8.0, (v + rng.integer(0, 3)) / 8.0};
        if (!isFlat(triangle)) triangles.push_back(triangle);
    }
    return triangles;
}

}  // namespace

TEST(UvOverlap, IsFoundLikeByLookingAtEachPair) {
    std::size_t found = 0;
    std::size_t count = 0;
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto triangles = trianglesOnEighths(rng, rng.integer(0, 60), rng.integer(1, 60));
        const UvOverlaps overlaps = findUvOverlaps(triangles);
        EXPECT_TRUE(overlaps.isComplete);
        EXPECT_EQ(overlaps.triangles, overlapsByEachPair(triangles));
        found += overlaps.triangles.size();
        count += triangles.size();
    }
    EXPECT_GT(found, count / 10);
    EXPECT_LT(found, count - count / 10);
}

TEST(UvOverlap, TrianglesThatTouchDoNotOverlap) {
    const TriangleUVs triangle = {UV(0.0, 0.0), UV(1.0, 0.0), UV(0.0, 1.0)};
    EXPECT_FALSE(doOverlap(triangle, {UV(1.0, 0.0), UV(1.0, 1.0), UV(0.0, 1.0)}));
    EXPECT_FALSE(doOverlap(triangle, {UV(0.25, 0.0), UV(0.5, 0.0), UV(0.3, -1.0)}));
    EXPECT_FALSE(doOverlap(triangle, {UV(1.0, 0.0), UV(2.0, 0.0), UV(1.0, 1.0)}));
    EXPECT_TRUE(doOverlap(triangle, triangle));
    EXPECT_TRUE(doOverlap(triangle, {UV(0.1, 0.1), UV(0.2, 0.1), UV(0.1, 0.2)}));
}

TEST(UvOverlap, RoundingIsNoOverlap) {
    const TriangleUVs left = {UV(0.0, 0.0), UV(0.5, 0.0), UV(0.5, 1.0)};
    const auto right = [](double shift) {
        return TriangleUVs{UV(0.5 - shift, 0.0), UV(1.0, 0.0), UV(0.5 - shift, 1.0)};
    };
    EXPECT_FALSE(doOverlap(left, right(1e-7)));
    EXPECT_TRUE(doOverlap(left, right(1e-5)));
}

TEST(UvOverlap, WhatCannotBeFoundInTimeIsNotWhole) {
    // Fans of thin triangles: all boxes overlap, and no triangle.
    std::vector<TriangleUVs> triangles;
    constexpr int kCount = 20000;
    for (int i = 0; i < kCount; ++i) {
        const double low = 0.5 + 0.4 * i / kCount;
        const double high = 0.5 + 0.4 * (i + 1) / kCount;
        triangles.push_back({UV(0.0, 0.0), UV(low, 1.0 - low), UV(high, 1.0 - high)});
    }
    const UvOverlaps overlaps = findUvOverlaps(triangles);
    EXPECT_TRUE(overlaps.triangles.empty());
    EXPECT_FALSE(overlaps.isComplete);
}
