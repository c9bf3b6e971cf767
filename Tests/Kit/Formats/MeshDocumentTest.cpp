#include <QuarnKit/Formats/Obj/MeshDocument.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cwchar>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>
#include <QuarnScreen/IScreenGeometry.h>

#include "Kit/Formats/ObjRepairCases.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;

std::vector<Triangle> load(const std::string& text, const std::wstring& forward = L"Y",
                           const std::wstring& upward = L"Z", float scale = 1.0F) {
    OBJScreen screen(forward, upward, scale);
    return loadTriangles(screen, text);
}

void expectSameCorners(const std::vector<Triangle>& triangles, const std::vector<Triangle>& expected) {
    ASSERT_EQ(triangles.size(), expected.size());
    for (std::size_t i = 0; i < triangles.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k) {
            ASSERT_EQ(triangles[i].vertices.at(k).position, expected[i].vertices.at(k).position) << i;
            ASSERT_EQ(triangles[i].vertices.at(k).uv, expected[i].vertices.at(k).uv) << i;
        }
}

TEST(MeshDocument, ATextHasItsRecordsInTheirOrder) {
    MeshDocument mesh;
    mesh.positions = {{0, 0, 0}, {1, 0, 0}, {0, 0, -0.1F}};
    mesh.uvs = {{0.5F, 1}};
    mesh.normals = {{0, 1, 0}};
    mesh.faces = {{{{.vertex = 0, .textureCoordinate = 0, .normal = 0},
                    {.vertex = 2, .textureCoordinate = -1, .normal = 0},
                    {.vertex = 1, .textureCoordinate = 0, .normal = -1}}}};
    EXPECT_EQ(objTextOf(mesh, "made"),
              "# made\nv 0 0 0\nv 1 0 0\nv 0 0 -0.1\nvt 0.5 1\nvn 0 1 0\nvn 0 -1 0\nf 1/1/1 3//1 2/1/2\n");
}

TEST(MeshDocument, TrianglesWithoutNormalsGetTheirOwnEachOfThemOnce) {
    MeshDocument mesh;
    mesh.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh.faces = {{{{.vertex = 0}, {.vertex = 1}, {.vertex = 2}}},
                  {{{.vertex = 1}, {.vertex = 0}, {.vertex = 2}}},
                  {{{.vertex = 1}, {.vertex = 2}, {.vertex = 0}}},
                  {{{.vertex = 1}, {.vertex = 1}, {.vertex = 0}}}};
    EXPECT_EQ(objTextOf(mesh, "made"),
              "# made\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvn 0 0 1\nvn 0 0 -1\n"
              "f 1//1 2//1 3//1\nf 2//2 1//2 3//2\nf 2//1 3//1 1//1\nf 2//1 2//1 1//1\n");
}

TEST(MeshDocument, EqualCornersOfTrianglesAreSharedInTheOrderOfTheirFirstUse) {
    const MeshDocument mesh = meshDocumentOf(flatGrid({.columns = 3, .rows = 2}));
    EXPECT_EQ(mesh.positions.size(), 12U);
    EXPECT_EQ(mesh.uvs.size(), 12U);
    EXPECT_EQ(mesh.faces.size(), 12U);
    std::int32_t highest = -1;
    for (const detail::ObjFace& face : mesh.faces)
        for (const detail::ObjCorner& corner : face) {
            EXPECT_LE(corner.vertex, highest + 1);
            highest = std::max(highest, corner.vertex);
            EXPECT_EQ(corner.normal, -1);
        }
}

TEST(MeshDocument, CornersWithoutUVReferToNone) {
    Mesh triangles = flatGrid({.columns = 1, .rows = 1});
    triangles[0].vertices[1].uv = kNoUV;
    const MeshDocument mesh = meshDocumentOf(triangles);
    EXPECT_EQ(mesh.faces[0][1].textureCoordinate, -1);
    EXPECT_GE(mesh.faces[0][0].textureCoordinate, 0);
    EXPECT_GE(mesh.faces[1][1].textureCoordinate, 0);
}

TEST(MeshDocument, TheLibraryLoadsTheFloatsOfRandomTriangles) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh triangles = soup(rng, 30);
        for (Triangle& triangle : triangles)
            for (TriangleVertex& vertex : triangle.vertices) {
                for (std::size_t axis = 0; axis < 3; ++axis)
                    vertex.position[axis] = std::ldexp(rng.integer(-8388608, 8388608), rng.integer(-140, 90));
                vertex.uv = {rng.integer(-4096, 8192) / 4096.0, rng.integer(-4096, 8192) / 4096.0};
                if (rng.integer(0, 9) == 0) vertex.uv = kNoUV;
            }
        expectSameCorners(load(objTextOf(meshDocumentOf(triangles), "made")), triangles);
    }
}

TEST(MeshDocument, ATextInTheFrameOfItsScreenLoadsAsThatScreen) {
    const std::string text =
        "v 1.5 -2 3e-3\nv 0.1 0.2 0.3\nv 7 8 9\nv -0.7 11 1e5\nv 4 4 4\nvt 0 0\nvt 1 0.25\nvt 9 9\nvn 0 0 1\n"
        "f 1/1/1 2/2/1 3/1/1 4/7/1\nf 4//1 2/2/1 1/1/1\n";
    for (const wchar_t* forward : {L"X", L"-X", L"Y", L"-Y", L"Z", L"-Z"})
        for (const wchar_t* upward : {L"X", L"-X", L"Y", L"-Y", L"Z", L"-Z"})
            for (const float scale : {1.0F, 0.001F, -2.54F}) {
                if (forward[std::wcslen(forward) - 1] == upward[std::wcslen(upward) - 1]) continue;
                const MeshDocument mesh =
                    meshDocumentOf(text, OBJScreen::getTransformMatrix(forward, upward, scale));
                EXPECT_EQ(mesh.positions.size(), 5U);
                EXPECT_EQ(mesh.uvs.size(), 3U);
                expectSameCorners(load(objTextOf(mesh, "made")), load(text, forward, upward, scale));
            }
}

// 2147483648 is the index with the greatest 32-bit number.
TEST(MeshDocument, ReferencesToUVsThatDoNotExistAreLeftOut) {
    const MeshDocument mesh =
        meshDocumentOf("v 0 0 0\nv 1 0 0\nv 0 0 1\nvt 0 0\nvn 0 -1 0\nf 1/2147483648/1 2/2/1 3/1/1\n",
                       Matrix<float, 4>::identity());
    EXPECT_THAT(objTextOf(mesh, "made"), ::testing::EndsWith("\nf 1//1 2//1 3/1/1\n"));
}

}  // namespace
}  // namespace quarn::test
