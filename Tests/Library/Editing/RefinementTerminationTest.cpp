#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <QuarnScreen/Detail/Limits/TerminationChecks.h>

#include "Reference/Mesh/ReferenceBoundary.h"
#include "Reference/Mesh/ReferenceRefinement.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;
using quarn::detail::refinementTerminates;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Length of an edge without squares, which overflow.
double reachOf(const TriangleVertex& a, const TriangleVertex& b) {
    double reach = 0.0;
    for (std::size_t i = 0; i < 3; ++i) reach = std::max(reach, std::abs(a.position[i] - b.position[i]));
    return reach;
}

// Sum of a triangle's edges. It is a piece of which the sum does not fall that is cut without end.
double sizeOf(const Triangle& triangle) {
    const auto& v = triangle.vertices;
    return reachOf(v[0], v[1]) * 0.25 + reachOf(v[1], v[2]) * 0.25 + reachOf(v[2], v[0]) * 0.25;
}

// Follows one piece after the other, mostly the largest one, and returns whether it reached one
// that is not cut.
bool endsAlongPaths(const Triangle& triangle, double bound, Rng& rng) {
    // Each cut takes a tenth off the longest edge at the least; from 2^1024 to 2^-1074 that takes
    // 14,000 of them.
    constexpr int kLevels = 15'000;
    for (int path = 0; path < 6; ++path) {
        Triangle current = triangle;
        int level = 0;
        for (; level < kLevels; ++level) {
            const std::vector<Triangle> pieces = referenceCut(current, bound);
            if (pieces.empty()) break;
            const bool isAny = path > 0 && rng.integer(0, 7) == 0;
            current = isAny ? pieces[static_cast<std::size_t>(rng.bits() % pieces.size())]
                            : *std::max_element(
                                  pieces.begin(), pieces.end(),
                                  [](const Triangle& a, const Triangle& b) { return sizeOf(a) < sizeOf(b); });
        }
        if (level == kLevels) return false;
    }
    return true;
}

Triangle sliverAt(const Point3& place, double size, Rng& rng) {
    const Point3 along = rng.point(-size, size);
    const double width = size * std::abs(rng.spread(-60, 0));
    return wholeTriangle(place, place + along,
                         place + rng.uniform(-0.5, 1.5) * along + rng.point(-width, width));
}

// The greatest coordinate that the triangle has, and what a bound must be measured by.
double maxCoordinate(const Triangle& triangle) {
    double greatest = 0.0;
    for (const TriangleVertex& corner : triangle.vertices)
        for (std::size_t i = 0; i < 3; ++i) greatest = std::max(greatest, std::abs(corner.position[i]));
    return greatest;
}

Triangle flatTriangle(double scale, double x) {
    return wholeTriangle({x, 0.0, 0.0}, {x + scale, 0.0, 0.0}, {x, scale, 0.0});
}

}  // namespace

TEST(RefinementTermination, IsSureForOrdinaryMeshesAndBounds) {
    EXPECT_TRUE(quarn::detail::refinementTerminates({}, 0.0));
    EXPECT_TRUE(quarn::detail::refinementTerminates({}, -1.0));
    for (const double bound : {1e-9, 0.01, 1.0, 1e9, kInfinity, std::nan("")})
        EXPECT_TRUE(quarn::detail::refinementTerminates(wave({4, 4}), bound)) << bound;
}

TEST(RefinementTermination, IsNotSureForABoundOfZeroOrBelow) {
    for (const double bound : {0.0, -0.0, -1.0, -kInfinity})
        EXPECT_FALSE(quarn::detail::refinementTerminates(wave({4, 4}), bound)) << bound;
}

TEST(RefinementTermination, OfOneTriangleThatDoesNotEndIsNotSureForAll) {
    Mesh mesh = flatGrid({2, 2});
    EXPECT_TRUE(quarn::detail::refinementTerminates(mesh, 0.5));
    mesh[3].vertices[1].position[0] = kInfinity;
    EXPECT_FALSE(quarn::detail::refinementTerminates(mesh, 0.5));
    EXPECT_TRUE(quarn::detail::refinementTerminates(mesh, kInfinity));
}

TEST(RefinementTermination, IsNotSureWhereHalvingReachesNeighbouringNumbers) {
    // Neighbors of 1e15 are an eighth apart.
    const Triangle triangle = flatTriangle(1.0, 1e15);
    EXPECT_FALSE(quarn::detail::refinementTerminates({triangle}, 0.1));
    EXPECT_FALSE(referenceRefine({triangle}, 0.1, 100'000).hasEnded);
    EXPECT_TRUE(quarn::detail::refinementTerminates({flatTriangle(10.0, 1e15)}, 5.0));
    EXPECT_TRUE(referenceRefine({flatTriangle(10.0, 1e15)}, 5.0, 100'000).hasEnded);
}

TEST(RefinementTermination, IsNotSureWhicheverEdgeIsTheLongOne) {
    const Point3 a(1e15, 0.0, 0.0);
    const Point3 b(1e15 + 1.0, 0.0, 0.0);
    const Point3 c(1e15 + 0.5, 0.0, 0.0);
    for (const Triangle& triangle :
         {wholeTriangle(a, b, c), wholeTriangle(c, a, b), wholeTriangle(b, c, a)}) {
        EXPECT_FALSE(quarn::detail::refinementTerminates({triangle}, 0.6));
        EXPECT_TRUE(quarn::detail::refinementTerminates({triangle}, 1.0));
    }
}

TEST(RefinementTermination, IsNotSureWhereLengthsOverflow) {
    // The squares of edges above 1.4e154 are infinite, and so longer than any bound, however far
    // they are halved; at 1e200 neighboring numbers are 1e184 apart.
    const Triangle triangle = flatTriangle(1e198, 1e200);
    EXPECT_FALSE(quarn::detail::refinementTerminates({triangle}, 1e197));
    EXPECT_FALSE(referenceRefine({triangle}, 1e197, 100'000).hasEnded);
    EXPECT_FALSE(quarn::detail::refinementTerminates({flatTriangle(1e301, 1e307)}, 1e300));
    EXPECT_TRUE(quarn::detail::refinementTerminates({triangle}, kInfinity));
}

TEST(RefinementTermination, IsNotSureWhereTheSearchForTheOutlineIsNot) {
    Mesh mesh = flatGrid({2, 2});
    mesh[5].vertices[2].uv[0] = std::nan("");
    EXPECT_FALSE(quarn::detail::refinementTerminates(mesh, 0.5));
    EXPECT_FALSE(quarn::detail::refinementTerminates(mesh, 100.0));
}

TEST(RefinementTermination, IsNotSureWhereMiddlesOfUVsAreNoNumbers) {
    Triangle triangle = flatTriangle(1.0, 0.0);
    for (const double uv : {kInfinity, std::numeric_limits<double>::max()}) {
        triangle.vertices[0].uv[1] = uv;
        EXPECT_FALSE(quarn::detail::refinementTerminates({triangle}, 0.5)) << uv;
        EXPECT_TRUE(quarn::detail::refinementTerminates({triangle}, 2.0)) << uv;
    }
}

TEST(RefinementTermination, HoldsForTheSearchForTheOutlineOfThePieces) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = flatGrid({2, 2});
        const double large = rng.coin() ? kInfinity : 1e308;
        for (Triangle& triangle : mesh)
            for (TriangleVertex& corner : triangle.vertices)
                for (std::size_t k = 0; k < 2; ++k)
                    if (rng.integer(0, 3) == 0) corner.uv[k] = rng.coin() ? large : -large;
        // Half of the meshes are cut.
        const double bound = rng.coin() ? 1.0 : 3.0;
        if (!quarn::detail::refinementTerminates(mesh, bound)) continue;
        ASSERT_TRUE(ReferenceBoundary(referenceRefine(mesh, bound).pieces, 10'000).hasEnded);
    }
}

TEST(RefinementTermination, HoldsForTheReferenceOverSmallPieces) {
    int ended = 0;
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        // Edges of some times the bound, far from the origin or near to it.
        const double bound = std::ldexp(rng.uniform(1.0, 2.0), rng.integer(-1073, 500));
        const double distance = bound * std::abs(rng.spread(-3, 52));
        const Triangle triangle =
            sliverAt(rng.point(-distance, distance), bound * rng.uniform(0.5, 8.0), rng);
        if (!quarn::detail::refinementTerminates({triangle}, bound)) continue;
        ++ended;
        ASSERT_TRUE(referenceRefine({triangle}, bound, 20'000).hasEnded) << bound;
    }
    EXPECT_GT(ended, seedCount(5000));
}

TEST(RefinementTermination, HoldsAtTheLeastBoundThatItAllows) {
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double size = std::ldexp(1.0, rng.integer(-1020, 400));
        const Triangle triangle =
            sliverAt(rng.point(-size, size), size * std::abs(rng.spread(-49, -40)), rng);
        // The least bound that is allowed, found by halving the gap between one that is and one
        // that is not.
        double allowed = maxCoordinate(triangle);
        double refused = 0.0;
        for (int step = 0; step < 100; ++step) {
            const double middle = refused + (allowed - refused) * 0.5;
            (quarn::detail::refinementTerminates({triangle}, middle) ? allowed : refused) = middle;
        }
        if (!(allowed > 0.0)) continue;
        ASSERT_TRUE(quarn::detail::refinementTerminates({triangle}, allowed));
        ASSERT_TRUE(endsAlongPaths(triangle, allowed, rng)) << allowed;
    }
}

TEST(RefinementTermination, HoldsAlongPathsOverAnyTriangleAndBound) {
    int cut = 0;
    for (int i = 0; i < seedCount(30000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Triangle triangle;
        const bool isWild = rng.integer(0, 3) == 0;
        const int exponent = rng.integer(-1070, 1020);
        for (TriangleVertex& corner : triangle.vertices)
            corner.position =
                isWild ? wildPoint<3>(rng) : rng.spreadPoint(std::max(exponent - 60, -1074), exponent);
        const double bound =
            std::abs(rng.coin() ? rng.spread(std::max(exponent - 60, -1074), exponent) : wildNumber(rng));
        if (!quarn::detail::refinementTerminates({triangle}, bound)) continue;
        cut += longEdges(triangle, bound) != 0 ? 1 : 0;
        ASSERT_TRUE(endsAlongPaths(triangle, bound, rng)) << bound;
    }
    EXPECT_GT(cut, 1000);
}

TEST(RefinementTermination, HoldsWhereSquaresOfLengthsFallShortOfTheLeastNumber) {
    for (int i = 0; i < seedCount(4000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double size = std::ldexp(1.0, rng.integer(-542, -530));
        const Triangle triangle = sliverAt(rng.point(-size, size), size, rng);
        const double bound =
            rng.coin() ? std::ldexp(1.0, rng.integer(-1074, -530)) : size * rng.uniform(0.1, 1.0);
        if (!quarn::detail::refinementTerminates({triangle}, bound)) continue;
        ASSERT_TRUE(endsAlongPaths(triangle, bound, rng)) << bound;
    }
}
