#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>

#include <new>
#include <stdexcept>
#include <string>
#include <thread>

#include "Library/Obj/ObjCases.h"

using namespace quarn;
using namespace quarn::test;

namespace {

void doNothing() {}

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

TEST(ObjScan, BothScansFillTheirLists) {
    const std::string text = stripText(1000);
    std::vector<Triangle> triangles;
    EXPECT_TRUE(sameLists(detail::parseObj(text, triangles, doNothing), referenceObjData(text)));
    EXPECT_TRUE(triangles.empty());
}

TEST(ObjScan, EmptyTextLeavesEmptyLists) {
    std::vector<Triangle> triangles;
    const detail::ObjData lists = detail::parseObj("", triangles, doNothing);
    EXPECT_TRUE(lists.faces.empty());
    EXPECT_TRUE(lists.vertexData.vertices.empty());
}

TEST(ObjScan, LargeMeshGetsRoomForItsTriangles) {
    const std::string text = stripText(30000);
    std::vector<Triangle> triangles;
    const detail::ObjData lists = detail::parseObj(text, triangles, doNothing);
    ASSERT_EQ(lists.faces.size(), 60000U);
    EXPECT_GE(triangles.capacity(), 60000U);
    EXPECT_TRUE(triangles.empty());
}

TEST(ObjScan, ManyFacesInLittleTextGetNoRoom) {
    std::string text = "f";
    for (int i = 0; i < 100000; ++i) text += " 1//1";
    std::vector<Triangle> triangles;
    EXPECT_EQ(detail::parseObj(text + "\n", triangles, doNothing).faces.size(), 99998U);
    EXPECT_EQ(triangles.capacity(), 0U);
}

TEST(ObjScan, MeshWithoutNormalsGetsNoRoom) {
    std::string text;
    for (int i = 0; i < 60000; ++i)
        text += "f 1000000000/1000000000 1000000000/1000000000 1000000000/1000000000\n";
    std::vector<Triangle> triangles;
    EXPECT_EQ(detail::parseObj(text, triangles, doNothing).faces.size(), 60000U);
    EXPECT_EQ(triangles.capacity(), 0U);
}

TEST(ObjScan, MeanwhileRunsOnTheCallingThread) {
    std::thread::id id;
    std::vector<Triangle> triangles;
    (void)detail::parseObj("v 1 2 3\n", triangles, [&] { id = std::this_thread::get_id(); });
    EXPECT_EQ(id, std::this_thread::get_id());
}

TEST(ObjScan, EndlessFaceLineIsAnAllocationFailure) {
    std::vector<Triangle> triangles;
    EXPECT_THROW((void)detail::parseObj("v 1 2 3\nf 1 1 1", triangles, doNothing), std::bad_alloc);
    EXPECT_TRUE(triangles.empty());
}

TEST(ObjScan, WhatMeanwhileThrowsReachesTheCallerAfterBothThreads) {
    const std::string text = stripText(1000);
    std::vector<Triangle> triangles;
    const auto fail = [] { throw std::runtime_error("stopped"); };
    EXPECT_THROW((void)detail::parseObj(text, triangles, fail), std::runtime_error);
    EXPECT_THROW((void)detail::parseObj("f", triangles, fail), std::runtime_error);
}
