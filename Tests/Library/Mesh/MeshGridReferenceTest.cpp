#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "Reference/Mesh/ReferenceGrid.h"
#include "Support/Mesh/BoundaryScreens.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/OverriddenScreen.h"

using namespace quarn::test;

namespace {

constexpr std::array kDensities = {2, 1, 0, -3, 3, 5, 8};

::testing::AssertionResult hasPlainGrid(const MeshScreen& screen, int density) {
    Lines grid(2, {Point3(9.0, 9.0, 9.0)});
    // Density 0 counts as made at first.
    if (density == 0) screen.sampleGrid(grid, -1);
    screen.sampleGrid(grid, density);
    return sameBits(grid, referenceGrid(sourcesOf(screen), density)) << " at density " << density;
}

int anyDensity(Rng& rng) {
    return kDensities[static_cast<std::size_t>(rng.integer(0, static_cast<int>(kDensities.size()) - 1))];
}

}  // namespace

TEST(MeshGridReference, NamedMeshesHaveTheGridOfTheReference) {
    Mesh twisted = flatGrid({8, 8});
    twistUV(twisted);
    Mesh overlapping = wave({8, 8});
    foldUV(overlapping);
    Mesh withoutUV = dome({6, 6});
    stripUV(withoutUV);
    const std::array meshes = {flatGrid({7, 5}),
                               dome({9, 7}),
                               wave({8, 8}),
                               gridWithHoles({9, 5}, 2),
                               gridWithSeam({8, 4}),
                               foldedSheet(4, 0.2, 3),
                               separatePieces(2, {3, 3}),
                               notchedGrid({9, 6}),
                               twisted,
                               overlapping,
                               withoutUV,
                               Mesh()};
    for (std::size_t i = 0; i < meshes.size(); ++i) {
        SCOPED_TRACE(i);
        const TriangleScreen screen(meshes[i]);
        for (const int density : kDensities) EXPECT_TRUE(hasPlainGrid(screen, density));
        EXPECT_TRUE(hasPlainGrid(screen, 50));
    }
}

TEST(MeshGridReference, AnyMeshWithItsUVAnywhereHasTheGridOfTheReference) {
    std::size_t pieces = 0;
    std::size_t lines = 0;
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = anyMesh(rng);
        if (rng.integer(0, 3) != 0) warpUV(mesh, rng);
        const TriangleScreen screen(mesh);
        const int density = anyDensity(rng);
        ASSERT_TRUE(hasPlainGrid(screen, density));
        Lines grid;
        screen.sampleGrid(grid, density);
        pieces += grid.size() - 1;
        lines += density > 0 ? 2 * static_cast<std::size_t>(density) : 0;
    }
    // Many lines must have been cut into pieces.
    EXPECT_GT(pieces, lines + lines / 4);
}

TEST(MeshGridReference, AnyOverriddenOutlineGivesTheGridOfTheReference) {
    const Mesh mesh = wave({6, 6});
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        OverriddenScreen screen(mesh);
        const std::vector<Point2> outline = anyOutline(rng);
        screen.onSampleBoundaryUV = [&](std::vector<Point2>& out) { out = outline; };
        if (rng.coin()) {
            screen.onSampleBoundary = [&](Lines& out) {
                Rng same(i);
                out.resize(static_cast<std::size_t>(same.integer(0, 3)));
                for (auto& line : out)
                    line.assign(static_cast<std::size_t>(same.integer(0, 3)), {1.0, 2.0, 3.0});
            };
        }
        if (rng.coin()) {
            screen.onMapInto3D = [](const Point2& uv, Point3& point, bool) {
                point[0] = point[0] + uv[0];
                point[1] = uv[1];
                return uv[0] + uv[1] < 1.3;
            };
        }
        ASSERT_TRUE(hasPlainGrid(screen, anyDensity(rng)));
    }
}

TEST(MeshGridReference, AGridAfterAChangeIsThatOfTheChangedMesh) {
    for (int i = 0; i < seedCount(40); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = anyShape(rng);
        warpUV(mesh, rng);
        TriangleScreen screen(mesh);
        EXPECT_TRUE(hasPlainGrid(screen, 4));
        switch (rng.integer(0, 2)) {
            case 0:
                screen.applyTransform(rng.point(-1.0, 1.0), rng.point(-180.0, 180.0), 2.0);
                break;
            case 1:
                screen.applyParameterizationTransform(rng.coin(), true);
                break;
            default:
                screen.refine(1.0);
                break;
        }
        EXPECT_TRUE(hasPlainGrid(screen, 4));
    }
}
