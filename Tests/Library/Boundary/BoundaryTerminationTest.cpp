#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include <QuarnScreen/Detail/Limits/TerminationChecks.h>
#include <QuarnScreen/MeshScreen.h>

#include "Reference/Mesh/ReferenceBoundary.h"
#include "Support/Mesh/MeshCases.h"

using namespace quarn::test;

namespace {

// Few numbers, so that corners and edges meet often; the last is NaN.
constexpr std::array kNumbers = {0.0,
                                 -0.0,
                                 1.0,
                                 std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::denorm_min(),
                                 std::numeric_limits<double>::max(),
                                 std::numeric_limits<double>::quiet_NaN()};

double anyNumber(Rng& rng, bool withNaN) {
    return kNumbers.at(
        static_cast<std::size_t>(rng.integer(0, static_cast<int>(kNumbers.size()) - (withNaN ? 1 : 2))));
}

Mesh specialSoup(Rng& rng, bool withNaN) {
    std::array<TriangleVertex, 7> corners;
    for (TriangleVertex& corner : corners) {
        for (std::size_t i = 0; i < 3; ++i) corner.position[i] = anyNumber(rng, withNaN);
        for (std::size_t i = 0; i < 2; ++i) corner.uv[i] = rng.coin() ? 0.0 : anyNumber(rng, withNaN);
    }
    Mesh mesh(static_cast<std::size_t>(rng.integer(0, 30)));
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices)
            corner =
                corners.at(static_cast<std::size_t>(rng.integer(0, static_cast<int>(corners.size()) - 1)));
    return mesh;
}

constexpr std::size_t kStepLimit = 10'000;

}  // namespace

TEST(BoundaryTermination, IsSureForNoTrianglesAndForNumbers) {
    EXPECT_TRUE(quarn::detail::boundarySearchTerminates({}));
    EXPECT_TRUE(quarn::detail::boundarySearchTerminates(wave({4, 4})));
    Mesh mesh = flatGrid({2, 2});
    mesh[3].vertices[1].position[2] = std::numeric_limits<double>::infinity();
    stripUV(mesh);
    EXPECT_TRUE(quarn::detail::boundarySearchTerminates(mesh));
}

TEST(BoundaryTermination, IsNotSureForANaNInAnyCoordinateOfAnyCorner) {
    for (std::size_t corner = 0; corner < 3; ++corner) {
        for (std::size_t coordinate = 0; coordinate < 5; ++coordinate) {
            Mesh mesh = flatGrid({2, 2});
            TriangleVertex& vertex = mesh.back().vertices.at(corner);
            (coordinate < 3 ? vertex.position[coordinate] : vertex.uv[coordinate - 3]) = std::nan("");
            EXPECT_FALSE(quarn::detail::boundarySearchTerminates(mesh)) << corner << coordinate;
        }
    }
}

TEST(BoundaryTermination, DoesNotDependOnNormalsAndDerivedFields) {
    Mesh mesh = flatGrid({2, 2});
    mesh[0].normal[0] = mesh[0].vertices[0].normal[1] = mesh[0].centroid[2] = mesh[0].uvDeterminant =
        std::nan("");
    EXPECT_TRUE(quarn::detail::boundarySearchTerminates(mesh));
}

TEST(BoundaryTermination, HoldsForTheSearchAndForTheReferenceOverAnySoup) {
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = i % 50 == 0 ? anyMesh(rng) : specialSoup(rng, false);
        ASSERT_TRUE(quarn::detail::boundarySearchTerminates(mesh));
        ASSERT_TRUE(ReferenceBoundary(mesh, kStepLimit).hasEnded);
        Boundary boundary;
        (void)MeshScreen::findBoundaryNew(mesh, boundary);
        ASSERT_LE(boundary.points.size(), 3 * mesh.size() + 1);
    }
}

TEST(BoundaryTermination, IsRefusedWhereverTheReferenceDoesNotEnd) {
    int endless = 0;
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = specialSoup(rng, true);
        if (ReferenceBoundary(mesh, kStepLimit).hasEnded) continue;
        ++endless;
        ASSERT_FALSE(quarn::detail::boundarySearchTerminates(mesh));
    }
    EXPECT_GT(endless, 100);
}
