#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <QuarnScreen/Detail/Editing/TriangleSubdivision.h>

#include "Reference/Mesh/ReferenceRefinement.h"
#include "Support/Mesh/BoundaryScreens.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleBits.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

double longestEdge(const Mesh& mesh) {
    double longest = 0.0;
    for (const Triangle& triangle : mesh) {
        const auto& v = triangle.vertices;
        for (std::size_t i = 0; i < 3; ++i)
            longest = std::max(longest, length(v[(i + 1) % 3].position - v[i].position));
    }
    return longest;
}

// A triangle of any form: with corners on a small lattice, so that ties, right angles and lines are
// common, or nearly degenerate.
Triangle anyTriangle(Rng& rng) {
    Triangle triangle;
    if (rng.integer(0, 2) == 0) {
        triangle = wholeTriangle(rng.integerPoint(0, 4), rng.integerPoint(0, 4), rng.integerPoint(0, 4));
    } else {
        const Point3 along = rng.point(-2.0, 2.0);
        const double width = std::abs(rng.spread(-40, 1));
        const Point3 from = rng.point(-1.0, 1.0);
        triangle = wholeTriangle(from, from + along,
                                 from + rng.uniform(-0.5, 1.5) * along + rng.point(-width, width));
    }
    std::rotate(triangle.vertices.begin(), triangle.vertices.begin() + rng.integer(0, 2),
                triangle.vertices.end());
    computeFields(triangle);
    return triangle;
}

}  // namespace

TEST(MeshRefineReference, AnyTriangleIsCutAsByTheReference) {
    std::array<std::size_t, 8> tally{};
    for (int i = 0; i < seedCount(10000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = {anyTriangle(rng)};
        if (rng.coin()) scatterNormals(mesh, rng);
        const double bound = longestEdge(mesh) * rng.uniform(0.05, 1.05);
        if (!(bound > 0.0)) continue;
        Mesh pieces;
        quarn::detail::splitTriangle(mesh[0], bound, pieces);
        const ReferenceRefinement plain = referenceRefine(mesh, bound);
        ASSERT_TRUE(plain.hasEnded);
        ASSERT_TRUE(sameTriangles(pieces, plain.pieces));
        for (std::size_t pattern = 0; pattern < 8; ++pattern) tally.at(pattern) += plain.tally[pattern];
    }
    for (std::size_t pattern = 0; pattern < 8; ++pattern) EXPECT_GT(tally.at(pattern), 500U) << pattern;
}

TEST(MeshRefineReference, AnyMeshIsCutAsByTheReference) {
    for (int i = 0; i < seedCount(150); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = anyShape(rng);
        if (rng.integer(0, 3) == 0) scale(mesh, std::abs(rng.spread(-60, 60)));
        if (rng.integer(0, 2) == 0) makeStale(mesh, rng, 0.3);
        if (rng.integer(0, 2) == 0) scatterNormals(mesh, rng);
        const double bound = longestEdge(mesh) * rng.uniform(0.15, 1.1);
        TriangleScreen screen(mesh);
        screen.refine(bound);
        ASSERT_TRUE(sameTriangles(screen.mesh(), referenceRefine(mesh, bound).pieces));
    }
}

TEST(MeshRefineReference, ARefinedMeshIsThatOfAScreenFilledWithThePieces) {
    for (int i = 0; i < seedCount(30); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = anyShape(rng);
        const double bound = longestEdge(mesh) * 0.4;
        TriangleScreen refined(mesh);
        refined.refine(bound);
        TriangleScreen filled(mesh);
        filled.reindex(referenceRefine(mesh, bound).pieces);
        EXPECT_TRUE(sameBits(refined.outline().points, filled.outline().points));
        EXPECT_TRUE(sameBits(refined.outline().uvPoints, filled.outline().uvPoints));
        EXPECT_EQ(refined.hasValidBoundary(), filled.hasValidBoundary());
        EXPECT_TRUE(sameBits(refined.getCentroid(), filled.getCentroid()));
    }
}
