#include <QuarnKit/Compare/TriangleTree.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Support/Mesh/Meshes.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using Point3 = Point<double, 3>;

// Returns triangles of one kind: a cloud, nearly degenerate, degenerate, many at one position, or
// overlapping.
std::vector<TriangleCorners> anyTriangles(Rng& rng) {
    const int form = rng.integer(0, 4);
    std::vector<TriangleCorners> triangles(static_cast<std::size_t>(rng.integer(1, 200)));
    for (TriangleCorners& triangle : triangles) {
        const double reach = form == 4 ? 1.0 : 0.1;
        const Point3 middle = form == 3 ? rng.integerPoint(-1, 1) : rng.point(-1, 1);
        for (Point3& corner : triangle) corner = middle + rng.point(-reach, reach);
        if (form == 1) triangle[2] = triangle[0] + (triangle[1] - triangle[0]) * rng.uniform(-1, 2);
        if (form == 2) triangle[1] = triangle[2] = triangle[0];
        if (form == 3 && rng.coin()) triangle = triangles.front();
    }
    return triangles;
}

TEST(TriangleTree, FindsWhatLookingAtEachTriangleFinds) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<TriangleCorners> triangles = anyTriangles(rng);
        const TriangleTree tree(triangles);
        std::uint32_t hint = TriangleTree::kNone;
        for (int k = 0; k < 20; ++k) {
            const Point3 point = rng.coin() ? rng.point(-1, 1) : rng.point(-20, 20);
            double least = INFINITY;
            for (const TriangleCorners& triangle : triangles)
                least = std::min(least, std::sqrt(squaredDistance(point, triangle)));
            const TriangleTree::Nearest nearest = tree.nearest(point, hint);
            ASSERT_NEAR(nearest.distance, least, 1e-13);
            ASSERT_EQ(tree.distanceTo(nearest.index, point), nearest.distance);
            ASSERT_EQ(std::sqrt(squaredDistance(point, tree.triangle(nearest.index))), nearest.distance);
            hint = rng.coin() ? nearest.index : TriangleTree::kNone;
        }
    }
}

TEST(TriangleTree, LimitedSearchReturnsBounds) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleTree tree(anyTriangles(rng));
        const TriangleTree::SearchLimits limits{.exactVisits = static_cast<std::uint64_t>(rng.integer(0, 10)),
                                                .maxVisits = static_cast<std::uint64_t>(rng.integer(0, 40)),
                                                .tolerance = rng.coin() ? 0.0 : rng.uniform(0, 1),
                                                .relativeTolerance = rng.coin() ? 0.0 : rng.uniform(0, 1)};
        for (int k = 0; k < 20; ++k) {
            const Point3 point = rng.coin() ? rng.point(-1, 1) : rng.point(-20, 20);
            std::uint64_t visits = 0;
            const TriangleTree::Nearest nearest = tree.nearest(point, TriangleTree::kNone, limits, visits);
            const double distance = tree.nearest(point).distance;
            ASSERT_LE(distance, nearest.distance);
            ASSERT_LE(nearest.minDistance, distance + 1e-13);
            ASSERT_EQ(tree.distanceTo(nearest.index, point), nearest.distance);
            ASSERT_LE(visits, limits.maxVisits);
            if (visits < limits.maxVisits) {
                const double tolerance =
                    std::max(limits.tolerance, limits.relativeTolerance * nearest.distance);
                ASSERT_LE(nearest.distance - nearest.minDistance, tolerance + 1e-13);
            }
        }
    }
}

TEST(TriangleTree, SearchFromTheCenterOfASphereIsShortWithATolerance) {
    std::vector<TriangleCorners> triangles;
    for (const Triangle& triangle : dome({300, 150}, kHalfSphere)) triangles.push_back(cornersOf(triangle));
    const TriangleTree tree(triangles);
    std::uint64_t visits = 0;
    const TriangleTree::Nearest nearest = tree.nearest(
        {0.0, 0.0, 0.0}, TriangleTree::kNone, {.exactVisits = 100, .relativeTolerance = 1e-3}, visits);
    EXPECT_LT(visits, triangles.size() / 20);
    EXPECT_NEAR(nearest.distance, 5.0, 5.0 * 1e-3);
    EXPECT_GE(nearest.minDistance, nearest.distance * (1.0 - 1e-3));
}

TEST(TriangleTree, HoldsEachTriangleOnce) {
    Rng rng(1);
    std::vector<TriangleCorners> triangles = anyTriangles(rng);
    const TriangleTree tree(triangles);
    std::vector<TriangleCorners> held;
    for (std::uint32_t i = 0; i < triangles.size(); ++i) held.push_back(tree.triangle(i));
    std::sort(triangles.begin(), triangles.end());
    std::sort(held.begin(), held.end());
    EXPECT_EQ(held, triangles);
}

TEST(TriangleTree, OfEqualTrianglesIsSearchedToo) {
    const TriangleCorners triangle{Point3(0, 0, 0), Point3(1, 0, 0), Point3(0, 1, 0)};
    const TriangleTree tree(std::vector<TriangleCorners>(1000, triangle));
    EXPECT_EQ(tree.nearest({0.25, 0.25, 2}).distance, 2.0);
}

}  // namespace
}  // namespace quarn::test
