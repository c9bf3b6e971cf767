#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>

#include <gmock/gmock.h>

#include <algorithm>

#include "Kit/Formats/ObjRepairCases.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using namespace std::string_literals;

const std::string kHead = "v 0 0 0\nv 1 0 0\nv 0 0 1\nvt 0 0\nvt 1 0\nvt 0 1\nvn 0 -1 0\n";  // lines 1 to 7
const std::string kFace = "f 1/1/1 2/2/1 3/3/1\n";

void expectWhole(const std::string& text) {
    SCOPED_TRACE(text);
    EXPECT_EQ(repairedText(text), text);
    EXPECT_THAT(repairsOf(text), ElementsAre());
}

TEST(ObjRepairer, ATextThatLoadsComesBackWhole) {
    expectWhole(kHead + kFace);
    expectWhole("# made\r\nmtllib a.mtl\r\n" + kHead + "o a\ng\ns off\nusemtl b\n" + kFace +
                "l 1 2\np 1\n\n\x1A");
    expectWhole(kHead + "f 1/1/1 2/2/1 3/3/1 \r\n");
    expectWhole(kHead + "f 1/1/1 2/2/1 3/3/1\r\r\n");
    expectWhole(kHead + "f 1/1/1 \\\n2/2/1 3/3/1\n");
    expectWhole(kHead + "  fo 01/1/1   2/2/1 3/3/1   \n");
    expectWhole(kHead + kFace + "v 1 2 3 \\\n");
}

// A text that the library reads as other programs do needs no repair.
TEST(ObjRepairer, AnOddTextThatIsReadAsItIsMeantComesBackWhole) {
    expectWhole("\xEF\xBB\xBF# made\n" + kHead + kFace);
    expectWhole(kHead + "f 1/1/1 2/2/1 3/3/1\t\n");
    expectWhole("v 0 0\t\nv 1 0 0#x\nv 0 0 1\t#y\nvn\t0 nan +1\nf 1//1 2//1 3//1\n");
    expectWhole("# one\r# two\n" + kHead + kFace);
    expectWhole("# C:\\dir\\\n# next\n" + kHead + kFace + "# C:\\");
    expectWhole(kHead + "f 1/9/1 2/2/1 3/3/1\n");
    expectWhole(kHead + "v 9 9 9\0\n"s + kFace);
    expectWhole(kHead + kFace + "v\t9 9 9\n");
}

TEST(ObjRepairer, AByteOrderMarkIsLeftOut) {
    EXPECT_EQ(repairedText("\xEF\xBB\xBF" + kHead + kFace), kHead + kFace);
    EXPECT_THAT(repairsOf("\xEF\xBB\xBF" + kHead + kFace), ElementsAre("byte-order-mark 1 from 1"));
}

TEST(ObjRepairer, OddSeparatorsBecomeBlanks) {
    const std::string text = kHead + "\tv\t9\v9 \f9\nf\t1/1/1\t2/2/1 3/3/1\t\n";
    EXPECT_EQ(repairedText(text), kHead + "v 9 9 9\nf 1/1/1 2/2/1 3/3/1\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("odd-separator 2 from 8"));
}

TEST(ObjRepairer, CarriageReturnsAloneBecomeLineFeeds) {
    std::string text = "# old\n" + kHead + kFace;
    const std::string right = text;
    std::replace(text.begin(), text.end(), '\n', '\r');
    EXPECT_EQ(repairedText(text), right);
    EXPECT_THAT(repairsOf(text), ElementsAre("line-end 9 from 1"));
}

TEST(ObjRepairer, AFaceAtTheEndGetsItsLineFeed) {
    EXPECT_EQ(repairedText(kHead + kFace.substr(0, kFace.size() - 1)), kHead + kFace);
    EXPECT_THAT(repairsOf(kHead + kFace.substr(0, kFace.size() - 1)),
                ElementsAre("final-line-feed 1 from 8"));
    EXPECT_EQ(repairedText(kHead + "f 1/1/1 2/2/1 3/3/1 \\\n"), kHead + kFace);
    EXPECT_EQ(repairedText(kHead + "f 1/1/1 2/2/1 3/3/1\\"), kHead + kFace);
}

TEST(ObjRepairer, LinesThatTheLibraryDoesNotJoinAreJoined) {
    const std::string text = kHead + "f 1/1/1 \\\r\n 2/2/1\\\r3/3/1\r\n";
    EXPECT_EQ(repairedText(text), kHead + kFace);
    EXPECT_THAT(repairsOf(text), ElementsAre("joined-line 1 from 8"));
}

TEST(ObjRepairer, ACommentBehindAFaceGetsALineOfItsOwn) {
    const std::string text = kHead + "f 1/1/1 2/2/1 3/3/1 # one\nf 1/1/1 2/2/1 3/3/1#two f\n";
    EXPECT_EQ(repairedText(text), kHead + "# one\n" + kFace + "#two f\n" + kFace);
    EXPECT_THAT(repairsOf(text), ElementsAre("trailing-comment 2 from 8"));
}

TEST(ObjRepairer, PlusSignsAreLeftOut) {
    const std::string text =
        "v +1 2 +3.5e+1 +4\nvt +0.5 +1\nv 0 0 0\nv 0 1 0\nvn 0 +1 0\nf 1/1/1 2/1/1 3/1/1\n";
    EXPECT_EQ(repairedText(text),
              "v 1 2 3.5e+1 +4\nvt 0.5 1\nv 0 0 0\nv 0 1 0\nvn 0 1 0\nf 1/1/1 2/1/1 3/1/1\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("plus-sign 5 from 1"));
}

TEST(ObjRepairer, RelativeReferencesBecomeTheNumbersThatTheyMean) {
    const std::string text = kHead + "f -3/-3/-1 2/-2/1 -1/3/-1\nv 9 9 9\nf -4//-1 -3//-1 -2//-1\n";
    EXPECT_EQ(repairedText(text), kHead + "f 1/1/1 2/2/1 3/3/1\nv 9 9 9\nf 1//1 2//1 3//1\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("relative-reference 6 from 8"));
}

TEST(ObjRepairer, SlashesTooManyAreLeftOut) {
    const std::string text = kHead + "f 1/1/ 2/ 3//\n";
    EXPECT_EQ(repairedText(text), kHead + "vn 0 -1 0\nf 1/1/2 2//2 3//2\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("corner-form 3 from 8", "missing-normal 3 from 8"));
}

TEST(ObjRepairer, FacesOfFewerThanThreeCornersBecomeComments) {
    const std::string text = kHead + "f\nf 1\n" + kFace + "f 1/1/1 2/2/1\n";
    EXPECT_EQ(repairedText(text), kHead + "# f\n# f 1\n" + kFace + "# f 1/1/1 2/2/1\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("short-face 3 from 8"));
}

// A dart whose third corner is reflex, by the numbers of its corners.
std::string dart(const std::string& face) {
    return "v 0 0 1\nv -2 0 -2\nv 0 0 0\nv 2 0 -2\nvt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\nvn 0 -1 0\n" + face;
}

TEST(ObjRepairer, ConcaveFacesWhoseFanFoldsBecomeTriangles) {
    const std::string right = "f 3/3/1 4/4/1 1/1/1 2/2/1\n";
    expectWhole(dart(right));
    const std::string text = dart(right + "f 2/2/1 3/3/1 4/4/1 1/1/1\n" + right);
    EXPECT_EQ(repairedText(text), dart(right + "f 1/1/1 2/2/1 3/3/1\nf 3/3/1 4/4/1 1/1/1\n" + right));
    EXPECT_THAT(repairsOf(text), ElementsAre("concave-face 1 from 11"));
    const RepairedObj repaired = repairObj("a.obj", text);
    EXPECT_THAT(repaired.triangleLines, ElementsAre(10, 10, 11, 11, 12, 12));
    EXPECT_THAT(repaired.concaveFaces, ElementsAre(2U));
    EXPECT_EQ(repairedText(dart("f -3 -2 -1 -4")), dart("vn 0 -1 0\nf 1//2 2//2 3//2\nf 3//2 4//2 1//2\n"));
}

TEST(ObjRepairer, FacesWithoutValidTrianglesStay) {
    const std::string text = kHead + "v 1 0 1\n" + kFace + "f 1/1/1 2/2/1 3/3/1 4/3/1\n";  // crossed
    expectWhole(text);
    const RepairedObj repaired = repairObj("a.obj", text);
    EXPECT_THAT(repaired.selfIntersectingFaces, ElementsAre(1U));
    const auto notice = selfIntersectionNotice("a.obj", repaired);
    ASSERT_TRUE(notice.has_value());
    EXPECT_EQ(notice->line, 10U);
    EXPECT_THAT(notice->text, ::testing::StartsWith("found 1 face whose triangles overlap"));
}

TEST(ObjRepairer, LinesThatWouldBeMisreadBecomeComments) {
    const std::string text = kHead + "vtx 1 2 3\nvnormal 1\nface 1/1/1 2/2/1 3/3/1\n" + kFace + "fin";
    EXPECT_EQ(repairedText(text),
              kHead + "# vtx 1 2 3\n# vnormal 1\n# face 1/1/1 2/2/1 3/3/1\n" + kFace + "# fin\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("unknown-line 4 from 8"));
}

TEST(ObjRepairer, ABackslashBehindANameSwallowsNoLine) {
    const std::string text = "mtllib C:\\\n# C:\\\n" + kHead + kFace;
    EXPECT_EQ(repairedText(text), "mtllib C:\\ \n# C:\\ \n" + kHead + kFace);
    EXPECT_THAT(repairsOf(text), ElementsAre("final-backslash 2 from 1"));
    EXPECT_EQ(repairedText("# \0\\\r\n"s + kHead + "f 1/1 2/2 3/3\n"),
              "#  \\ \n" + kHead + "vn 0 -1 0\nf 1/1/2 2/2/2 3/3/2\n");
}

TEST(ObjRepairer, UVsThatAreNoNumbersAreNotReferredTo) {
    const std::string text = "vt nan 0\nvt\nvt 0.5\n" + kHead + "f 1/1/1 2/2/1 3/3/1\n";
    EXPECT_EQ(repairedText(text), "vt nan 0\nvt\nvt 0.5\n" + kHead + "f 1//1 2//1 3/3/1\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("unreadable-uv 2 from 11"));
}

TEST(ObjRepairer, ReferencesToUVsThatAreNotThereAreLeftOut) {
    const std::string text = kHead + "f -3/9/1 2/0/1 3/-4/1\n";
    EXPECT_EQ(repairedText(text), kHead + "f 1//1 2//1 3//1\n");
    EXPECT_THAT(repairsOf(text), ElementsAre("relative-reference 2 from 8", "bad-uv-reference 3 from 8"));
}

TEST(ObjRepairer, TrianglesNameTheLineOfTheirFace) {
    const RepairedObj repaired =
        repairObj("a.obj", "\n" + kHead + "f 1 2 \\\n3 1 2\nf 1 2\nf 1 2 3 # last\n");
    EXPECT_THAT(repaired.triangleLines, ElementsAre(9, 9, 9, 12));
}

}  // namespace
}  // namespace quarn::test
