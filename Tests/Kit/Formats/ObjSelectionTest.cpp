#include <QuarnKit/Formats/Obj/Parts/ObjSelection.h>

#include <gmock/gmock.h>

#include <QuarnKit/Base/Error.h>

namespace quarn::test {
namespace {

using ::testing::ThrowsMessage;

std::string selected(const std::string& text, const std::vector<std::string>& names) {
    ObjSource source{.file = "a.obj", .name = "a.obj", .text = text, .frame = {}};
    selectObjParts(source, names);
    return source.text;
}

const std::string kHead = "v 0 0 0\nv 1 0 0\nv 0 0 1\nvn 0 -1 0\n";
const std::string kFace = "f 1//1 2//1 3//1\n";
const std::string kBlank = "                \n";

TEST(ObjSelection, WithoutNamesTheTextStays) {
    EXPECT_EQ(selected("no mesh", {}), "no mesh");
}

TEST(ObjSelection, FacesOfOtherPartsBecomeBlank) {
    const std::string text = kHead + kFace + "o A\n" + kFace + "g b c\n" + kFace + "o B\n" + kFace;
    const auto expected = [](bool isDefault, bool isA, bool isGroup, bool isB) {
        const auto face = [](bool isSelected) { return isSelected ? kFace : kBlank; };
        return kHead + face(isDefault) + "o A\n" + face(isA) + "g b c\n" + face(isGroup) + "o B\n" +
               face(isB);
    };
    EXPECT_EQ(selected(text, {"A"}), expected(false, true, true, false));
    EXPECT_EQ(selected(text, {"B"}), expected(false, false, false, true));
    EXPECT_EQ(selected(text, {"b"}), expected(false, false, true, false));
    EXPECT_EQ(selected(text, {"c"}), expected(false, false, true, false));
    EXPECT_EQ(selected(text, {"b c"}), expected(false, false, true, false));
    EXPECT_EQ(selected(text, {"default"}), expected(true, false, false, false));
    EXPECT_EQ(selected(text, {"B", "b"}), expected(false, false, true, true));
}

TEST(ObjSelection, ContinuedLinesKeepTheirLineEnds) {
    EXPECT_EQ(selected(kHead + "f 1//1 2//1 \\\r\n 3//1 # x\r\no A\n" + kFace, {"A"}),
              kHead + std::string(13, ' ') + "\r\n" + std::string(9, ' ') + "\r\no A\n" + kFace);
}

TEST(ObjSelection, LinesThatOnlyTheLibraryReadsAsFacesBecomeBlankToo) {
    EXPECT_EQ(selected(kHead + "face 1\n\tf 1 2 3\no A\n" + kFace, {"A"}),
              kHead + "      \n        \no A\n" + kFace);
}

TEST(ObjSelection, AnUnknownNameIsRefusedWithTheNearestNames) {
    EXPECT_THAT(
        [] {
            selected(kHead + "o Wall\n" + kFace + "o Floor\n" + kFace, {"Floor", "wal"});
        },
        ThrowsMessage<Error>("a.obj: found no object or group \"wal\", expected one of \"Wall\", \"Floor\""));
    EXPECT_THAT([] { selected(kHead + kFace, {"wall"}); },
                ThrowsMessage<Error>("a.obj: found no object or group \"wall\", expected \"default\""));
    EXPECT_THAT([] { selected(kHead + "o Wall\n" + kFace, {"default"}); },
                ThrowsMessage<Error>("a.obj: found no object or group \"default\", expected \"Wall\""));
    std::string text = kHead;
    for (int i = 0; i < 100; ++i) text += "o part" + std::to_string(i) + "\n" + kFace;
    EXPECT_THAT([&] { selected(text, {"part1x"}); },
                ThrowsMessage<Error>("a.obj: found no object or group \"part1x\", expected one of \"part1\", "
                                     "\"part10\", \"part11\", \"part12\", \"part13\" and 95 more"));
}

TEST(ObjSelection, APartWithoutFacesIsRefused) {
    EXPECT_THAT(
        [] { selected(kHead + kFace + "o A\nl 1 2\n", {"A"}); },
        ThrowsMessage<Error>("a.obj: found no face in the object or group \"A\", expected one with faces"));
}

}  // namespace
}  // namespace quarn::test
