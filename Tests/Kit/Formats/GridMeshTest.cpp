#include <QuarnKit/Formats/GridMesh.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>
#include <sstream>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/OBJScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;
const Point<double, 3> kOrigin;
// Twice what rounding to a float does to a number, beside its size.
constexpr double kFloatRounding = 1.2e-7;

Point<double, 3> coordinatesOf(const MeshDocument& mesh, const detail::ObjCorner& corner) {
    const auto& [x, y, z] = mesh.positions.at(static_cast<std::size_t>(corner.vertex));
    return {x, y, z};
}

Point<double, 3> normalOf(const MeshDocument& mesh, const detail::ObjCorner& corner) {
    const auto& [x, y, z] = mesh.normals.at(static_cast<std::size_t>(corner.normal));
    return {x, y, z};
}

Point<double, 2> uvOf(const MeshDocument& mesh, const detail::ObjCorner& corner) {
    const auto& [u, v] = mesh.uvs.at(static_cast<std::size_t>(corner.textureCoordinate));
    return {u, v};
}

void expectNoRepeats(const MeshDocument& mesh) {
    EXPECT_EQ(std::set(mesh.positions.begin(), mesh.positions.end()).size(), mesh.positions.size());
    EXPECT_EQ(std::set(mesh.uvs.begin(), mesh.uvs.end()).size(), mesh.uvs.size());
    EXPECT_EQ(std::set(mesh.normals.begin(), mesh.normals.end()).size(), mesh.normals.size());
}

// Whether all corners are where the screen has their UV, and all triangles are turned to the
// viewer, with normals that are too.
void expectOnScreen(const MeshDocument& mesh, const IScreenGeometry& screen) {
    double reach = 0.0;
    for (const auto& [x, y, z] : mesh.positions)
        reach = std::max(reach, 4 * kFloatRounding * length(Point<double, 3>(x, y, z)));
    for (const detail::ObjFace& face : mesh.faces) {
        const Point<double, 3> first = coordinatesOf(mesh, face[0]);
        const Point<double, 3> facing =
            cross(coordinatesOf(mesh, face[1]) - first, coordinatesOf(mesh, face[2]) - first);
        ASSERT_GT(dot(facing, screen.getEyepoint() - first), 0.0);
        for (const detail::ObjCorner& corner : face) {
            Point<double, 3> expected;
            ASSERT_TRUE(screen.mapInto3D(uvOf(mesh, corner), expected, true));
            ASSERT_LE(length(coordinatesOf(mesh, corner) - expected), reach);
            ASSERT_NEAR(length(normalOf(mesh, corner)), 1.0, 1e-6);
            ASSERT_GT(dot(facing, normalOf(mesh, corner)) / length(facing), 0.9);
        }
    }
}

void expectUVOfScreen(const MeshDocument& mesh, const IScreenGeometry& screen) {
    for (const detail::ObjFace& face : mesh.faces)
        for (const detail::ObjCorner& corner : face) {
            const Point<double, 2> expected = screen.mapInto2D(coordinatesOf(mesh, corner), true);
            ASSERT_NEAR(uvOf(mesh, corner)[0], expected[0], 1e-6);
            ASSERT_NEAR(uvOf(mesh, corner)[1], expected[1], 1e-6);
        }
}

OBJScreen::Status statusOf(const MeshDocument& mesh) {
    OBJScreen screen;
    std::istringstream stream(objTextOf(mesh, "test"));
    screen.deserialize(stream);
    return screen.getStatus();
}

void expectWholeMesh(const IScreenGeometry& screen) {
    const GridSize size{.rows = 12, .columns = 24};
    const MeshDocument mesh = gridMeshOf(screen, size);
    EXPECT_EQ(mesh.positions.size(), 13U * 25U);
    EXPECT_EQ(mesh.uvs.size(), 13U * 25U);
    EXPECT_EQ(mesh.faces.size(), 2U * 12U * 24U);
    expectNoRepeats(mesh);
    expectOnScreen(mesh, screen);
    expectUVOfScreen(mesh, screen);
    EXPECT_EQ(statusOf(mesh), OBJScreen::StatusOk);
}

TEST(GridMesh, AFlatScreenIsAWholeMesh) {
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        expectWholeMesh(FlatScreen(rng.uniform(0.1, 50.0), rng.uniform(0.1, 50.0)));
    }
}

TEST(GridMesh, ACurvedWallIsAWholeMesh) {
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double from = rng.uniform(-kPi, 0.0);
        expectWholeMesh(CylinderScreen(rng.point(-3.0, 3.0), rng.uniform(6.0, 20.0), from,
                                       from + rng.uniform(0.3, 3.0), rng.uniform(0.5, 9.0)));
    }
}

TEST(GridMesh, ASectionOfASphereIsAWholeMesh) {
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double from = rng.uniform(-kPi, 0.0);
        const double below = rng.uniform(-1.2, 0.3);
        expectWholeMesh(SphericalScreen(rng.point(-3.0, 3.0), rng.uniform(6.0, 20.0), from,
                                        from + rng.uniform(0.3, 3.0), below, below + rng.uniform(0.3, 1.0)));
    }
}

TEST(GridMesh, ARuledSurfaceIsAWholeMesh) {
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double top = rng.uniform(0.2, 1.0);
        const double bottom = rng.uniform(0.2, 1.0);
        expectWholeMesh(
            RuledSurfaceScreen(rng.uniform(3.0, 9.0), rng.uniform(1.0, 4.0), -top, top, -bottom, bottom));
    }
}

TEST(GridMesh, LimitsTheOtherWayRoundStillFaceTheViewer) {
    const SphericalScreen screen(kOrigin, 5.0, 1.0, -1.0, -0.5, 0.5);
    const MeshDocument mesh = gridMeshOf(screen, {.rows = 8, .columns = 16});
    expectOnScreen(mesh, screen);
}

TEST(GridMesh, OneCellIsTwoTriangles) {
    const MeshDocument mesh = gridMeshOf(FlatScreen(4.0, 3.0), {.rows = 1, .columns = 1});
    EXPECT_EQ(mesh.positions.size(), 4U);
    EXPECT_EQ(mesh.normals.size(), 1U);
    EXPECT_EQ(mesh.faces.size(), 2U);
    EXPECT_EQ(statusOf(mesh), OBJScreen::StatusOk);
}

TEST(GridMesh, ADomeHasOneVertexAtItsPoleAndNoneTwiceAtItsSeam) {
    const SphericalScreen screen({1.0, 2.0, 3.0}, 6.0, -kPi, kPi, 0.0, kPi / 2);
    const MeshDocument mesh = gridMeshOf(screen, {.rows = 8, .columns = 24});
    EXPECT_EQ(mesh.positions.size(), 8U * 24U + 1U);
    EXPECT_EQ(mesh.faces.size(), 24U + 7U * 24U * 2U);
    EXPECT_EQ(mesh.uvs.size(), 24U + 8U * 25U);
    expectNoRepeats(mesh);
    expectOnScreen(mesh, screen);
    std::size_t cornersAtPole = 0;
    for (const detail::ObjFace& face : mesh.faces)
        for (const detail::ObjCorner& corner : face)
            if (length(coordinatesOf(mesh, corner) - Point<double, 3>(1.0, 2.0, 9.0)) < 1e-6) ++cornersAtPole;
    EXPECT_EQ(cornersAtPole, 24U);
    EXPECT_EQ(statusOf(mesh), OBJScreen::StatusOk);
}

TEST(GridMesh, AWholeSphereHasTwoPoles) {
    const SphericalScreen screen(kOrigin, 2.0, -kPi, kPi, -kPi / 2, kPi / 2);
    const MeshDocument mesh = gridMeshOf(screen, {.rows = 12, .columns = 24});
    EXPECT_EQ(mesh.positions.size(), 11U * 24U + 2U);
    EXPECT_EQ(mesh.faces.size(), 2U * 24U + 10U * 24U * 2U);
    expectNoRepeats(mesh);
    expectOnScreen(mesh, screen);
}

TEST(GridMesh, AWholeCylinderSharesVerticesAtItsSeam) {
    const CylinderScreen screen(kOrigin, 3.0, -kPi, kPi, 4.0);
    const MeshDocument mesh = gridMeshOf(screen, {.rows = 4, .columns = 24});
    EXPECT_EQ(mesh.positions.size(), 5U * 24U);
    EXPECT_EQ(mesh.uvs.size(), 5U * 25U);
    expectNoRepeats(mesh);
    expectOnScreen(mesh, screen);
}

TEST(MinGridSize, CellsSpanLessThanHalfATurn) {
    const auto sizeOf = [](const IScreenGeometry& screen) {
        const GridSize size = minGridSizeOf(screen);
        return std::pair(size.rows, size.columns);
    };
    EXPECT_EQ(sizeOf(FlatScreen(4.0, 3.0)), std::pair(1, 1));
    EXPECT_EQ(sizeOf(CylinderScreen(kOrigin, 3.0, -kPi, kPi, 2.0)), std::pair(1, 3));
    EXPECT_EQ(sizeOf(CylinderScreen(kOrigin, 3.0, 1.0, -1.0, 2.0)), std::pair(1, 1));
    EXPECT_EQ(sizeOf(SphericalScreen(kOrigin, 3.0, -kPi, kPi, 0.0, kPi / 2)), std::pair(1, 3));
    EXPECT_EQ(sizeOf(SphericalScreen(kOrigin, 3.0, -kPi, kPi, -kPi / 2, kPi / 2)), std::pair(2, 3));
    EXPECT_EQ(sizeOf(RuledSurfaceScreen(4.0, 2.0, -1.0, 1.0, -2.0, 2.0)), std::pair(1, 2));
}

TEST(MinGridSize, MeshOfThatSizeHasFaces) {
    const SphericalScreen dome(kOrigin, 3.0, -kPi, kPi, 0.0, kPi / 2);
    EXPECT_EQ(gridMeshOf(dome, minGridSizeOf(dome)).faces.size(), 3U);
    EXPECT_EQ(expectedInsteadOf({.rows = 1, .columns = 3}, dome), std::nullopt);
    EXPECT_EQ(expectedInsteadOf({.rows = 1, .columns = 2}, dome),
              "at least 1 row and 3 columns, so that each cell spans less than half a turn");
}

}  // namespace
}  // namespace quarn::test
