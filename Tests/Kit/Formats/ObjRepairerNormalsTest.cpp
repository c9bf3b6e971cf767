#include <gmock/gmock.h>

#include "Kit/Formats/ObjRepairCases.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;

const std::string kVertices = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";  // lines 1 to 4

TEST(ObjRepairerNormals, ATextWithoutAnyGetsThemInFrontOfItsFirstFace) {
    const std::string text = kVertices + "g a\nf 1 2 3 4\nf 3 2 1\n";
    EXPECT_EQ(repairedText(text),
              kVertices + "g a\nvn 0 0 1\nvn 0 0 -1\nf 1//1 2//1 3//1 4//1\nf 3//2 2//2 1//2\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("missing-normal 7 from 6"));
}

TEST(ObjRepairerNormals, EqualOnesAreAddedOnce) {
    EXPECT_EQ(repairedText(kVertices + "f 1 2 3\nf 1 3 4\nf 1 2 4\n"),
              kVertices + "vn 0 0 1\nf 1//1 2//1 3//1\nf 1//1 3//1 4//1\nf 1//1 2//1 4//1\n");
}

TEST(ObjRepairerNormals, TheyCountOnFromThoseInFront) {
    EXPECT_EQ(repairedText("vn 1 0 0\n" + kVertices + "f 1//1 2//-1 3\n"),
              "vn 1 0 0\n" + kVertices + "vn 0 0 1\nf 1//1 2//1 3//2\n");
}

TEST(ObjRepairerNormals, TheyComeBehindThoseBehindAllFaces) {
    EXPECT_EQ(repairedText(kVertices + "f 1 2 3//1\nvn 1 0 0"),
              kVertices + "f 1//2 2//2 3//1\nvn 1 0 0\nvn 0 0 1\n");
}

TEST(ObjRepairerNormals, TheyComeBehindTheLastOneBetweenFaces) {
    EXPECT_EQ(repairedText(kVertices + "f 1 2 3\nvn 1 0 0\nf 1//1 2//2 3//-1\nvn 0 1 0\nf 3 2 1\n"),
              kVertices +
                  "f 1//3 2//3 3//3\nvn 1 0 0\nf 1//1 2//2 3//1\nvn 0 1 0\nvn 0 0 1\nvn 0 0 -1\n"
                  "f 3//4 2//4 1//4\n");
}

TEST(ObjRepairerNormals, TheyComeFirstWhereAFaceDoes) {
    EXPECT_EQ(repairedText("f 1 2 3\n" + kVertices), "vn 0 0 1\nf 1//1 2//1 3//1\n" + kVertices);
}

TEST(ObjRepairerNormals, TheLastLineIsClosedInFrontOfThem) {
    for (const char* end : {"", "\\", "\\\n", " # last"}) {
        SCOPED_TRACE(end);
        const std::string text = repairedText(kVertices + "f 1 2 3\nvn 1 0 0" + end);
        EXPECT_THAT(text, ::testing::EndsWith("\nvn 0 0 1\n"));
        EXPECT_THAT(text, ::testing::HasSubstr("f 1//2 2//2 3//2\nvn 1 0 0"));
    }
}

TEST(ObjRepairerNormals, BadReferencesGetTheNormalOfTheFace) {
    const std::string text = "vn 1 0 0\n" + kVertices + "f 1//0 2//2 3//1 4//-2\n";
    EXPECT_EQ(repairedText(text), "vn 1 0 0\n" + kVertices + "vn 0 0 1\nf 1//2 2//2 3//1 4//2\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("relative-reference 1 from 6", "bad-normal-reference 3 from 6"));
}

TEST(ObjRepairerNormals, AFaceWithoutAreaGetsAny) {
    EXPECT_THAT(repairedText(kVertices + "f 1 1 1\n"), ::testing::HasSubstr("vn 0 0 1\n"));
    EXPECT_THAT(repairedText("v 1e60 0 0\nv 0 1e60 0\nv 0 0 0\nf 1 2 3\n"),
                ::testing::HasSubstr("vn 0 0 1\n"));
}

TEST(ObjRepairerNormals, HollowPolygonsGetThatOfTheirWholeArea) {
    // The fan of the first one would overlap. The second one begins at the inner corner of an
    // arrowhead.
    EXPECT_THAT(
        repairedText("v 0 1 0\nv 2 0 0\nv 0 4 0\nv -2 0 0\nf 2 3 4 1\nf 1 2 3 4\n"),
        ::testing::HasSubstr("vn 0 0 1\nf 1//1 2//1 3//1\nf 3//1 4//1 1//1\nf 1//1 2//1 3//1 4//1\n"));
}

TEST(ObjRepairerNormals, AFanOfAMillionCornersGetsOne) {
    std::string text = kVertices + "f";
    for (int i = 0; i < 1000000; ++i) text += i % 2 == 0 ? " -4" : " 3";
    const RepairedObj repaired = repairObj("a.obj", text);
    EXPECT_EQ(repaired.triangleLines.size(), 999998U);
    EXPECT_THAT(repaired.text, ::testing::StartsWith(kVertices + "vn 0 0 1\nf 1//1 3//1"));
    EXPECT_THAT(repaired.text, ::testing::EndsWith(" 1//1 3//1\n"));
}

}  // namespace
}  // namespace quarn::test
