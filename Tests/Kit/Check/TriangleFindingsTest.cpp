#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Kit/Check/CheckCases.h"

using namespace quarn;
using namespace quarn::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MeshCheck, FindsNothingInGoodMeshes) {
    for (const Mesh& mesh :
         {flatGrid({1, 1}), flatGrid({30, 20}), cylinderSection({40, 10}), dome({30, 20}), wave({25, 30}),
          dome({30, 20}, {6.0, -3.0, 3.0, 0.0, 1.4}), cylinderSection({40, 10}, 5.0, 3.0, 6.283185307179586)})
        EXPECT_THAT(namesOf(check(mesh)), IsEmpty()) << mesh.size();
}

TEST(MeshCheck, FindsNothingInGoodMeshesInAnyOrder) {
    for (int i = 0; i < 20; ++i) {
        SCOPED_TRACE(i);
        Mesh mesh = dome({9, 7});
        shuffle(mesh, i);
        EXPECT_THAT(namesOf(check(mesh)), IsEmpty());
    }
}

TEST(MeshCheck, FindsNothingWhereThereAreNoTriangles) {
    EXPECT_THAT(namesOf(check({})), IsEmpty());
}

TEST(MeshCheck, ValuesThatAreNotFiniteStopAllElse) {
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        Mesh mesh = flatGrid({3, 3});
        mesh[4].vertices[1].position[2] = value;
        mesh[7].vertices[2].uv[0] = value;
        mesh.push_back(mesh[0]);
        const auto findings = check(mesh);
        ASSERT_THAT(namesOf(findings), ElementsAre("not-finite"));
        EXPECT_EQ(findings[0].count, 2U);
        EXPECT_THAT(trianglesOf(findings[0]), ElementsAre(5, 8));
        EXPECT_EQ(findings[0].places[1].line, lineOfTriangle(8));
    }
}

TEST(MeshCheck, TriangleWithARepeatedCornerIsDegenerate) {
    Mesh mesh = flatGrid({3, 3});
    Triangle triangle = mesh[5];
    triangle.vertices[1].position = triangle.vertices[0].position;
    triangle.vertices[1].uv = triangle.vertices[0].uv;
    computeFields(triangle);
    mesh.push_back(triangle);
    const auto findings = check(mesh);
    ASSERT_THAT(namesOf(findings), ElementsAre("degenerate-triangle"));
    EXPECT_EQ(findings[0].count, 1U);
    EXPECT_THAT(trianglesOf(findings[0]), ElementsAre(19));
}

TEST(MeshCheck, TriangleIsDegenerateWhereFloatsCannotTellItFromALine) {
    // A step between neighboring floats at 4 is 4.8e-7.
    for (const auto& [height, isDegenerate] : {std::pair{0.0, true}, {3e-7, true}, {1e-5, false}}) {
        const Mesh mesh = {wholeTriangle({0.0, 0.0, 0.0}, {4.0, 0.0, 0.0}, {1.0, 0.0, -height})};
        EXPECT_EQ(findingNamed("degenerate-triangle", check(mesh)).count, isDegenerate ? 1U : 0U) << height;
    }
}

TEST(MeshCheck, PoleOfManyTrianglesIsDegenerateWhereItsCornersAreOne) {
    Mesh mesh = dome({12, 6}, kHalfSphere);
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices)
            if (corner.uv[1] == 0.0) corner.position = {0.0, 0.0, 5.0};
    computeFields(mesh);
    const auto findings = check(mesh);
    ASSERT_THAT(namesOf(findings), ElementsAre("degenerate-triangle"));
    EXPECT_EQ(findings[0].count, 12U);
}

TEST(MeshCheck, DuplicateIsFoundInAnyRotationAndFlipped) {
    const Mesh grid = flatGrid({3, 3});
    for (int turn = 0; turn < 3; ++turn) {
        for (const bool isOver : {false, true}) {
            Mesh mesh = grid;
            Triangle copy = grid[4];
            std::rotate(copy.vertices.begin(), copy.vertices.begin() + turn, copy.vertices.end());
            if (isOver) flipWinding(copy);
            mesh.push_back(copy);
            mesh.push_back(copy);
            const auto findings = check(mesh);
            ASSERT_THAT(namesOf(findings), ElementsAre("duplicate-triangle")) << turn << isOver;
            EXPECT_EQ(findings[0].count, 2U);
            EXPECT_THAT(trianglesOf(findings[0]), ElementsAre(19, 20));
        }
    }
}

TEST(MeshCheck, OnlyTheFirstFewPlacesAreReported) {
    Mesh mesh = flatGrid({3, 3});
    const Mesh copy = mesh;
    mesh.insert(mesh.end(), copy.begin(), copy.end());
    const Finding finding = findingNamed("duplicate-triangle", check(mesh));
    EXPECT_EQ(finding.count, 18U);
    EXPECT_THAT(trianglesOf(finding), ElementsAre(19, 20, 21, 22, 23));
}

TEST(MeshCheck, VerticesThatNoFaceHasAreANote) {
    const Mesh mesh = {wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, -1.0}, {1.0, 0.0, 0.0})};
    detail::ObjData objData;
    objData.vertexData.vertices.resize(6);
    objData.faces.push_back(
        {detail::ObjCorner{0, -1, 0}, detail::ObjCorner{1, -1, 0}, detail::ObjCorner{3, -1, 0}});
    const Finding finding =
        findingNamed("unused-vertex", checkMesh({.objData = objData, .triangles = mesh, .lines = {}}, "m"));
    EXPECT_EQ(finding.severity, Severity::Note);
    EXPECT_EQ(finding.count, 3U);
    EXPECT_THAT(finding.text, ::testing::HasSubstr("vertex 3"));
}

TEST(MeshCheck, SizeIsSeenInItsUnit) {
    const auto found = [](double width, const std::string& unit) {
        Mesh mesh = flatGrid({2, 2}, {width, width});
        return findingNamed("implausible-size", check(mesh, unit));
    };
    EXPECT_EQ(found(4.0, "m").count, 0U);
    EXPECT_EQ(found(4000.0, "mm").count, 0U);
    EXPECT_EQ(found(700.0, "m").count, 0U);  // 990 m across
    EXPECT_EQ(found(12.0, "in").count, 0U);
    EXPECT_EQ(found(750.0, "m").count, 1U);
    EXPECT_EQ(found(0.007, "m").count, 1U);
    EXPECT_EQ(found(1.0, "km").count, 1U);
    EXPECT_THAT(found(4000.0, "m").hint, ::testing::HasSubstr("a scale of 0.001"));
    EXPECT_THAT(found(4.0, "mm").hint, ::testing::HasSubstr("a scale of 1000"));
    EXPECT_THAT(found(4000.0, "m").text, ::testing::HasSubstr("5657 m across"));
    EXPECT_THAT(found(1e9, "m").hint, ::testing::StartsWith("check the scale"));
}

namespace {

Mesh movedBy(Mesh mesh, const Point<double, 3>& offset) {
    for (Triangle& triangle : mesh)
        for (TriangleVertex& vertex : triangle.vertices) vertex.position = vertex.position + offset;
    return mesh;
}

Finding roundingBeside(const Mesh& first, const Mesh& second) {
    Mesh mesh = first;
    mesh.insert(mesh.end(), second.begin(), second.end());
    return findingNamed("rounded-positions", check(mesh));
}

}  // namespace

TEST(MeshCheck, RoundingOfAFarComponentBesideANearOneIsFound) {
    const Mesh near = flatGrid({4, 4}, {10.0, 10.0});
    const Finding finding = roundingBeside(near, movedBy(near, {512345.0, 5403210.0, 312.0}));
    EXPECT_EQ(finding.count, near.size());
    EXPECT_THAT(trianglesOf(finding), ElementsAre(near.size() + 1));
    EXPECT_THAT(finding.text, ::testing::StartsWith("positions are rounded to multiples of 0.5 m"));
    EXPECT_THAT(finding.text, ::testing::HasSubstr("a component of 32 triangles that is far"));
    EXPECT_EQ(roundingBeside(near, movedBy(near, {0.0, 300.0, 0.0})).count, 0U);
}

TEST(MeshCheck, RoundingOfASmallFragmentIsMeasuredByTheWholeMesh) {
    const Mesh fragment = movedBy(flatGrid({1, 1}, {0.01, 0.01}), {0.0, 30.0, 0.0});
    EXPECT_EQ(roundingBeside(flatGrid({4, 4}, {20.0, 20.0}), fragment).count, 0U);
}
