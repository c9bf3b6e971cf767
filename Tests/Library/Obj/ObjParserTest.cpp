#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjTriangles.h>

#include <new>
#include <stdexcept>
#include <string>
#include <thread>

#include "Library/Obj/ObjCases.h"

using namespace quarn;
using namespace quarn::test;

namespace {

// A strip of quads, each with two corners of its own.
std::string stripText(int quads) {
    std::string text;
    for (int i = 0; i <= 2 * quads + 1; ++i)
        text += "v " + std::to_string(i / 2) + " 0 " + std::to_string(i % 2) + "\nvt 0.5 0.25\n";
    text += "vn 0 1 0\n";
    for (int i = 1; i < 2 * quads; i += 2) {
        const auto corner = [](int index) {
            return " " + std::to_string(index) + "/" + std::to_string(index) + "/1";
        };
        text += "f" + corner(i) + corner(i + 1) + corner(i + 3) + corner(i + 2) + " \n";
    }
    return text;
}

}  // namespace

TEST(ObjParser, BothScansFillTheirLists) {
    const std::string text = stripText(1000);
    EXPECT_TRUE(sameLists(detail::parseObj(text), referenceObjData(text)));
}

TEST(ObjParser, EmptyTextLeavesEmptyLists) {
    const detail::ObjData lists = detail::parseObj("");
    EXPECT_TRUE(lists.faces.empty());
    EXPECT_TRUE(lists.vertexData.vertices.empty());
}

TEST(ObjParser, MeanwhileRunsOnTheCallingThread) {
    std::thread::id id;
    (void)detail::parseObj("v 1 2 3\n", {.meanwhile = [&] { id = std::this_thread::get_id(); }});
    EXPECT_EQ(id, std::this_thread::get_id());
}

TEST(ObjParser, TasksAfterTheScansRunOnTheirThreads) {
    const std::string text = stripText(10);
    std::size_t faceCount = 0;
    std::thread::id ofFaces = std::this_thread::get_id();
    std::thread::id ofVertexData = ofFaces;
    const detail::ObjData data =
        detail::parseObj(text, {.afterFaces =
                                    [&](const std::vector<detail::ObjFace>& faces) {
                                        faceCount = faces.size();
                                        ofFaces = std::this_thread::get_id();
                                    },
                                .afterVertexData = [&] { ofVertexData = std::this_thread::get_id(); }});
    EXPECT_EQ(faceCount, data.faces.size());
    EXPECT_NE(ofFaces, std::this_thread::get_id());
    EXPECT_NE(ofVertexData, std::this_thread::get_id());
}

TEST(ObjParser, UnterminatedFaceLineIsAnAllocationFailure) {
    EXPECT_THROW((void)detail::parseObj("v 1 2 3\nf 1 1 1"), std::bad_alloc);
}

TEST(ObjParser, FacesAboveTheLimitAreAnAllocationFailure) {
    const std::string text = stripText(10) + "f 1/1/1 2/2/1 3/3/1 4/4/1 5/5/1\n";
    EXPECT_EQ(detail::parseObj(text, {.maxFaceCount = 23}).faces.size(), 23U);
    for (const std::size_t limit : {0U, 1U, 19U, 20U, 22U})
        EXPECT_THROW((void)detail::parseObj(text, {.maxFaceCount = limit}), std::bad_alloc) << limit;
    EXPECT_TRUE(detail::parseObj("v 1 2 3\n", {.maxFaceCount = 0}).faces.empty());
}

TEST(ObjParser, ExceptionsOfTasksArriveInTheirOrderAfterBothThreads) {
    const std::string text = stripText(1000);
    const auto failMeanwhile = [] { throw std::runtime_error("meanwhile"); };
    const auto failAfterFaces = [](const std::vector<detail::ObjFace>&) {
        throw std::logic_error("after faces");
    };
    const auto failAfterVertexData = [] { throw std::range_error("after vertex data"); };
    EXPECT_THROW((void)detail::parseObj(text, {.meanwhile = failMeanwhile}), std::runtime_error);
    EXPECT_THROW((void)detail::parseObj("f", {.meanwhile = failMeanwhile}), std::runtime_error);
    EXPECT_THROW(
        (void)detail::parseObj(text, {.afterFaces = failAfterFaces, .afterVertexData = failAfterVertexData}),
        std::logic_error);
    EXPECT_THROW((void)detail::parseObj("f", {.afterVertexData = failAfterVertexData}), std::bad_alloc);
    EXPECT_THROW((void)detail::parseObj(text, {.afterVertexData = failAfterVertexData}), std::range_error);
}

TEST(ReserveObjTriangles, ReservesMemoryOfALargeMesh) {
    const std::string text = stripText(30000);
    std::vector<Triangle> triangles;
    const detail::ObjData data = detail::parseObj(text);
    ASSERT_EQ(data.faces.size(), 60000U);
    EXPECT_EQ(detail::reserveObjTriangles(data.faces, text.size(), triangles), 60000 * sizeof(Triangle));
    EXPECT_GE(triangles.capacity(), 60000U);
    EXPECT_TRUE(triangles.empty());
}

TEST(ReserveObjTriangles, DoesNothingForASmallMesh) {
    const std::string text = stripText(1000);
    std::vector<Triangle> triangles;
    EXPECT_EQ(detail::reserveObjTriangles(detail::parseObj(text).faces, text.size(), triangles), 0U);
    EXPECT_EQ(triangles.capacity(), 0U);
}

TEST(ReserveObjTriangles, DoesNothingForManyFacesInLittleText) {
    std::string text = "f";
    for (int i = 0; i < 100000; ++i) text += " 1//1";
    text += "\n";
    std::vector<Triangle> triangles;
    const detail::ObjData data = detail::parseObj(text);
    EXPECT_EQ(data.faces.size(), 99998U);
    EXPECT_EQ(detail::reserveObjTriangles(data.faces, text.size(), triangles), 0U);
    EXPECT_EQ(triangles.capacity(), 0U);
}

TEST(ReserveObjTriangles, DoesNothingForAMeshWithoutNormals) {
    std::string text;
    for (int i = 0; i < 60000; ++i)
        text += "f 1000000000/1000000000 1000000000/1000000000 1000000000/1000000000\n";
    std::vector<Triangle> triangles;
    const detail::ObjData data = detail::parseObj(text);
    EXPECT_EQ(data.faces.size(), 60000U);
    EXPECT_EQ(detail::reserveObjTriangles(data.faces, text.size(), triangles), 0U);
    EXPECT_EQ(triangles.capacity(), 0U);
}
