#include <QuarnKit/Formats/Obj/Parts/ObjParts.h>

#include <gmock/gmock.h>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/Parts/NearestNames.h>

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Each part as its kind, name, faces, vertices and line.
std::vector<std::string> partsOf(const std::string& text) {
    std::vector<std::string> words;
    for (const ObjPart& part : listObjParts("a.obj", text))
        words.push_back((part.kind == ObjPartKind::Object ? "o " : "g ") + part.name + ": " +
                        std::to_string(part.faces) + " " + std::to_string(part.vertices) + " from " +
                        std::to_string(part.line));
    return words;
}

const std::string kVertices = "v 0 0 0\nv 1 0 0\nv 0 0 1\nv 1 0 1\n";  // lines 1 to 4

TEST(ObjParts, ObjectsAndGroupsAreListedInTheirOrder) {
    EXPECT_THAT(partsOf(kVertices + "o Wall\ng left\nf 1 2 3\ng right\nf 2 3 4\no Floor\nf 1 2 4\n"),
                ElementsAre("o Wall: 2 4 from 5", "g left: 1 3 from 6", "g right: 1 3 from 8",
                            "o Floor: 1 3 from 10"));
}

TEST(ObjParts, FacesOfNoObjectAndNoGroupAreTheDefaultGroup) {
    EXPECT_THAT(partsOf(kVertices + "f 1 2 3\no Wall\nf 2 3 4\n"),
                ElementsAre("g default: 1 3 from 5", "o Wall: 1 3 from 6"));
    EXPECT_THAT(partsOf(kVertices + "g a\nf 1 2 3\ng\nf 2 3 4\no\nf 1 2 4\n"),
                ElementsAre("g a: 1 3 from 5", "g default: 2 4 from 8"));
    EXPECT_THAT(partsOf(kVertices + "g default\nf 1 2 3\n"), ElementsAre("g default: 1 3 from 6"));
}

TEST(ObjParts, NamesOfObjectsMayContainBlanksAndNumberSigns) {
    EXPECT_THAT(partsOf(kVertices + "o  Left wall #2\t \r\nf 1 2 3\n"),
                ElementsAre("o Left wall #2: 1 3 from 5"));
}

TEST(ObjParts, ALineMayNameSeveralGroups) {
    EXPECT_THAT(partsOf(kVertices + "g a b  a\nf 1 2 3\ng b\nf 2 3 4\n"),
                ElementsAre("g a: 1 3 from 5", "g b: 2 4 from 5"));
}

TEST(ObjParts, PartsOfOneNameAreOne) {
    EXPECT_THAT(partsOf(kVertices + "o A\nf 1 2 3\no B\nf 1 2 3\no A\nf 1 2 4\ng A\nf 1 2 3\n"),
                ElementsAre("o A: 3 4 from 5", "o B: 1 3 from 7", "g A: 1 3 from 11"));
}

TEST(ObjParts, ATextThatNeedsRepairIsListed) {
    EXPECT_THAT(partsOf("\xEF\xBB\xBFo A\r" + kVertices + "f\t-4/ 2 \\\r\n 3\rf 1 9 x\ro empty\r"),
                ElementsAre("o A: 2 3 from 1", "o empty: 0 0 from 9"));
}

TEST(ObjParts, TextsWithoutAnyOrWithTooManyAreRefused) {
    EXPECT_THAT([] { partsOf(kVertices); },
                ::testing::ThrowsMessage<Error>(HasSubstr("found no face, object")));
    std::string names = "g";
    for (int i = 0; i < 257; ++i) names += " g" + std::to_string(i);
    EXPECT_THAT([&] { partsOf(kVertices + names + "\n"); },
                ::testing::ThrowsMessage<Error>(HasSubstr("a.obj:5: found 257 groups in one line")));
}

TEST(NearestNames, TheMostSimilarNamesComeFirst) {
    EXPECT_THAT(nearestNames("wal", {"floor", "Walls", "ceiling", "Wall"}, 2), ElementsAre("Wall", "Walls"));
    EXPECT_THAT(nearestNames("b", {"x", "y", "b"}, 9), ElementsAre("b", "x", "y"));
    EXPECT_THAT(nearestNames("b", {}, 9), ElementsAre());
}

}  // namespace
}  // namespace quarn::test
