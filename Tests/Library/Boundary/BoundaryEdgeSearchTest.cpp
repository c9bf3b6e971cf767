#include <QuarnScreen/Detail/Boundary/BoundaryEdgeSearch.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <QuarnScreen/Detail/Boundary/BoundaryWalk.h>
#include "Library/Boundary/BoundaryCases.h"
#include "Reference/Mesh/ReferenceBoundary.h"

using namespace quarn::test;
using quarn::detail::findBoundaryEdges;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

namespace {

using Numbers = std::array<double, 5>;

Numbers numbersOf(const TriangleVertex& corner) {
    return {corner.position[0], corner.position[1], corner.position[2], corner.uv[0], corner.uv[1]};
}

// Counts the triangles of each edge.
std::vector<std::uint32_t> countedBoundaryEdges(const std::vector<Triangle>& triangles) {
    struct Edge {
        int count = 0;
        std::uint32_t last = 0;
    };
    std::map<std::pair<Numbers, Numbers>, Edge> edges;
    std::uint32_t number = 0;
    for (const Triangle& triangle : triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            const Numbers a = numbersOf(triangle.vertices[i]);
            const Numbers b = numbersOf(triangle.vertices[(i + 1) % 3]);
            Edge& edge = edges[std::minmax(a, b)];
            ++edge.count;
            edge.last = number++;
        }
    }
    std::vector<std::uint32_t> odd;
    for (const auto& [ends, edge] : edges)
        if (edge.count % 2 == 1) odd.push_back(edge.last);
    std::sort(odd.begin(), odd.end());
    return odd;
}

// Corners whose last number is chosen such that all have one hash.
std::vector<TriangleVertex> collidingCorners(std::size_t count) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    constexpr std::uint64_t kWanted = 0x3FF0000000000000U;
    std::vector<TriangleVertex> corners;
    for (double x = 0.0; corners.size() < count; ++x) {
        std::uint64_t hash = 1;
        for (const double number : {x, 1.0, 2.0, 3.0}) {
            hash = (hash ^ std::bit_cast<std::uint64_t>(number)) * kFactor;
            hash ^= hash >> 32U;
        }
        const double v = std::bit_cast<double>(hash ^ kWanted);
        if (!std::isnan(v)) corners.push_back(cornerAt({x, 1.0, 2.0}, {3.0, v}));
    }
    return corners;
}

}  // namespace

TEST(BoundaryEdgeSearch, OfNoTriangleAreNone) {
    EXPECT_THAT(quarn::detail::findBoundaryEdges({}), Optional(IsEmpty()));
}

TEST(BoundaryEdgeSearch, AreNumberedByTriangleAndCorner) {
    const TriangleVertex a = cornerOnPlane(0, 0);
    const TriangleVertex b = cornerOnPlane(1, 0);
    const TriangleVertex c = cornerOnPlane(1, 1);
    const TriangleVertex d = cornerOnPlane(0, 1);
    EXPECT_THAT(quarn::detail::findBoundaryEdges({triangleOf(a, b, c)}), Optional(ElementsAre(0, 1, 2)));
    EXPECT_THAT(quarn::detail::findBoundaryEdges({triangleOf(a, b, c), triangleOf(d, a, c)}),
                Optional(ElementsAre(0, 1, 3, 5)));
    EXPECT_THAT(quarn::detail::findBoundaryEdges({triangleOf(a, b, c), triangleOf(c, b, a)}),
                Optional(IsEmpty()));
    EXPECT_THAT(
        quarn::detail::findBoundaryEdges({triangleOf(a, b, c), triangleOf(b, c, a), triangleOf(a, c, b)}),
        Optional(ElementsAre(6, 7, 8)));
}

TEST(BoundaryEdgeSearch, DistinguishCornersByEachOfTheFiveNumbers) {
    const Triangle triangle = triangleOf(cornerOnPlane(0, 0), cornerOnPlane(1, 0), cornerOnPlane(1, 1));
    for (std::size_t i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        Triangle other = triangle;
        TriangleVertex& corner = other.vertices[0];
        double& number = i < 3 ? corner.position[i] : corner.uv[i - 3];
        number = std::nextafter(number, 2.0);
        // All but the edge opposite to the changed corner.
        EXPECT_THAT(quarn::detail::findBoundaryEdges({triangle, other}), Optional(ElementsAre(0, 2, 3, 5)));
    }
}

TEST(BoundaryEdgeSearch, TakeBothZerosForOneNumber) {
    const Triangle triangle = triangleOf(cornerOnPlane(0.0, 0.0), cornerOnPlane(1, 0.0), cornerOnPlane(1, 1));
    const Triangle other = triangleOf(cornerAt({-0.0, 0.0, -0.0}, {0.0, -0.0}),
                                      cornerAt({1, -0.0, 0.0}, {1, -0.0}), cornerOnPlane(1, 1));
    EXPECT_THAT(quarn::detail::findBoundaryEdges({triangle, other}), Optional(IsEmpty()));
}

TEST(BoundaryEdgeSearch, AreThoseOfTheReferenceCount) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto kind = static_cast<BoundaryCase>(i % static_cast<int>(BoundaryCase::Count));
        const std::vector<Triangle> triangles = boundaryCase(kind, rng);
        ASSERT_THAT(quarn::detail::findBoundaryEdges(triangles), Optional(countedBoundaryEdges(triangles)));
    }
}

TEST(BoundaryEdgeSearch, AreThoseOfTheReferenceCountWhereTheTableGrowsAndShrinks) {
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<Triangle> triangles = gridAt(0.0, 40, rng.integer(20, 60));
        shuffle(triangles, rng);
        // A second copy of some, so that the table runs empty again or nearly so.
        std::vector<Triangle> again = triangles;
        shuffle(again, rng);
        again.resize(again.size() / static_cast<std::size_t>(rng.integer(1, 2)));
        triangles.insert(triangles.end(), again.begin(), again.end());
        ASSERT_THAT(quarn::detail::findBoundaryEdges(triangles), Optional(countedBoundaryEdges(triangles)));
    }
}

TEST(BoundaryEdgeSearch, AreNotFoundThisWayWhereANumberIsNone) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = 0; i < 15; ++i) {
        SCOPED_TRACE(i);
        Triangle triangle = triangleOf(cornerOnPlane(0, 0), cornerOnPlane(1, 0), cornerOnPlane(1, 1));
        TriangleVertex& corner = triangle.vertices[i / 5];
        (i % 5 < 3 ? corner.position[i % 5] : corner.uv[i % 5 - 3]) = kNaN;
        EXPECT_EQ(quarn::detail::findBoundaryEdges({triangle}), std::nullopt);
    }
}

TEST(BoundaryEdgeSearch, AreNotFoundThisWayWhereCornersWereChosenToCollide) {
    const std::vector<TriangleVertex> corners = collidingCorners(9000);
    std::vector<Triangle> triangles;
    for (std::size_t i = 0; i < corners.size(); i += 3)
        triangles.push_back(triangleOf(corners[i], corners[i + 1], corners[i + 2]));
    EXPECT_EQ(quarn::detail::findBoundaryEdges(triangles), std::nullopt);

    // The boundary is found nevertheless.
    Boundary boundary;
    const ReferenceBoundary plain(triangles);
    EXPECT_EQ(quarn::detail::findBoundary(triangles, boundary).edgesLeft, plain.edgesLeft);
    EXPECT_EQ(boundary.triangles, plain.boundary.triangles);

    // A few that collide do no harm.
    triangles.resize(30);
    EXPECT_THAT(quarn::detail::findBoundaryEdges(triangles), Optional(countedBoundaryEdges(triangles)));
}

TEST(BoundaryEdgeSearch, OfRegularMeshesDoNotCollideByChance) {
    // Numbers of few bits, of many, large and small, all in steps.
    for (const double step : {1.0, 0.1, 1.0 / 1024.0, 1e-300, 1e300, 65536.0}) {
        SCOPED_TRACE(step);
        std::vector<Triangle> triangles;
        for (int i = 0; i < 30'000; ++i) {
            const double x = i % 32 * step;
            const double y = i / 32 * step;
            triangles.push_back(triangleOf(cornerAt({x, y, 0}, {0, 0}), cornerAt({x, y, step}, {0, 0}),
                                           cornerAt({y, x, 0}, {0, y})));
        }
        EXPECT_THAT(quarn::detail::findBoundaryEdges(triangles), Optional(countedBoundaryEdges(triangles)));
    }
}
