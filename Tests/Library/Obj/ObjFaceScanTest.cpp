#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>

#include <new>
#include <string>
#include <vector>

using namespace quarn;

namespace {

// The vertex numbers of each triangle as the text counts them, for instance "1 2 3, 1 3 4".
std::string fansOf(const std::string& text) {
    std::vector<detail::ObjFace> faces;
    detail::scanFaces(text, faces);
    std::string fans;
    for (const detail::ObjFace& face : faces) {
        fans += fans.empty() ? "" : ", ";
        fans += std::to_string(face[0].vertex + 1) + " " + std::to_string(face[1].vertex + 1) + " " +
                std::to_string(face[2].vertex + 1);
    }
    return fans;
}

// Whether the scan ends as if it had filled the memory.
bool isEndless(const std::string& text) {
    std::vector<detail::ObjFace> faces;
    try {
        detail::scanFaces(text, faces);
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

}  // namespace

TEST(ObjFaceScan, ThreeCornersAreATriangle) {
    EXPECT_EQ(fansOf("f 1 2 3\n"), "1 2 3");
    EXPECT_EQ(fansOf("f 1/1/1 2/2/2 3/3/3\nf 3//1 2//1 4//1\n"), "1 2 3, 3 2 4");
}

TEST(ObjFaceScan, EveryPolygonIsAFanAroundItsFirstCorner) {
    EXPECT_EQ(fansOf("f 1 2 3 4\n"), "1 2 3, 1 3 4");
    EXPECT_EQ(fansOf("f 5 6 7 8 9 \n"), "5 6 7, 5 7 8, 5 8 9");
}

TEST(ObjFaceScan, FansCopyAllThreeIndices) {
    std::vector<detail::ObjFace> faces;
    detail::scanFaces("f 1/2/3 4/5/6 7/8/9 10/11/12\n", faces);
    ASSERT_EQ(faces.size(), 2U);
    EXPECT_EQ(faces[1][0].textureCoordinate, 1);
    EXPECT_EQ(faces[1][0].normal, 2);
    EXPECT_EQ(faces[1][1].textureCoordinate, 7);
    EXPECT_EQ(faces[1][1].normal, 8);
    EXPECT_EQ(faces[1][2].textureCoordinate, 10);
    EXPECT_EQ(faces[1][2].normal, 11);
}

TEST(ObjFaceScan, PolygonMayHaveAMillionCorners) {
    std::string text = "f";
    for (int i = 1; i <= 1000000; ++i) text += " " + std::to_string(i);
    std::vector<detail::ObjFace> faces;
    detail::scanFaces(text + "\n", faces);
    ASSERT_EQ(faces.size(), 999998U);
    EXPECT_EQ(faces.back()[0].vertex, 0);
    EXPECT_EQ(faces.back()[2].vertex, 999999);
}

TEST(ObjFaceScan, FewerCornersAreFilledWithNone) {
    EXPECT_EQ(fansOf("f\n"), "0 0 0");
    EXPECT_EQ(fansOf("f 1 2\n"), "1 2 0");
}

TEST(ObjFaceScan, CarriageReturnEndsTheLineWithOrWithoutABlank) {
    EXPECT_EQ(fansOf("f 1 2 3\r\n"), "1 2 3");
    EXPECT_EQ(fansOf("f 1 2 3 \r\n"), "1 2 3");
    EXPECT_EQ(fansOf("f 1 2 3 4 \r\nf 4 5 6\r\n"), "1 2 3, 1 3 4, 4 5 6");
}

TEST(ObjFaceScan, WhatFollowsACarriageReturnBehindABlankIsNotRead) {
    EXPECT_EQ(fansOf("f 1 2 3 \r 4 5\n"), "1 2 3");
    // Before the third corner it is a corner like any other.
    EXPECT_EQ(fansOf("f 1 2 \r 4\n"), "1 2 0, 1 0 4");
}

TEST(ObjFaceScan, CommentBehindTheCornersIsACornerOfItsOwn) {
    EXPECT_EQ(fansOf("f 1 2 3 # x\n"), "1 2 3, 1 3 0, 1 0 0");
    EXPECT_EQ(fansOf("f 1 2 3 #x\n"), "1 2 3, 1 3 0");
}

TEST(ObjFaceScan, AnyWordThatBeginsWithFIsAFace) {
    EXPECT_EQ(fansOf("foo 1 2 3\n"), "1 2 3");
    EXPECT_EQ(fansOf("  f 1 2 3\n"), "1 2 3");
    EXPECT_EQ(fansOf("f1 2 3 4\n"), "2 3 4");
    EXPECT_EQ(fansOf("f\t1 2 3\n"), "2 3 0");
}

TEST(ObjFaceScan, OtherLinesAreSkipped) {
    EXPECT_EQ(fansOf("# f 1 2 3\n$f 1 2 3\no f 1\n\tf 1 2 3\nF 1 2 3\n\n \nv f 1\nusemtl f\n"), "");
}

TEST(ObjFaceScan, TabIsNoBlank) {
    EXPECT_EQ(fansOf("f 1\t2 3 4\n"), "1 3 4");
}

TEST(ObjFaceScan, LineThatTheTextEndsIsEndless) {
    for (const char* text :
         {"f", "f ", "f 1", "f 1 2 3", "f 1 2 3 ", "f 1 2 3 4", "f 1 2 3\r", "v 1\nf 1 2 3"}) {
        EXPECT_TRUE(isEndless(text)) << text;
        EXPECT_FALSE(isEndless(std::string(text) + "\n")) << text;
    }
}

TEST(ObjFaceScan, CarriageReturnBehindABlankEndsTheLastLineToo) {
    EXPECT_FALSE(isEndless("f 1 2 3 \r"));
    EXPECT_TRUE(isEndless("f 1 2 \r"));
}

TEST(ObjFaceScan, NulBeforeTheLineFeedIsEndless) {
    using namespace std::string_literals;
    EXPECT_TRUE(isEndless("f 1 2 3\0\n"s));
    EXPECT_TRUE(isEndless("f 1\0 2 3\n"s));
    EXPECT_FALSE(isEndless("f 1 2 3 \r\0\n"s));
}

TEST(ObjFaceScan, NulEndsOtherLines) {
    using namespace std::string_literals;
    EXPECT_EQ(fansOf("# x\0f 1 2 3\n"s), "1 2 3");
    EXPECT_EQ(fansOf("\0\0f 1 2 3\n\0"s), "1 2 3");
}
