#include <QuarnKit/Formats/Obj/Repair/ObjReadingCheck.h>

#include <gtest/gtest.h>

#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/ObjSourceText.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>

namespace quarn::test {
namespace {

// Four vertices, so that faces refer to existing ones even if the library skips the first.
const std::string kRest = "v 0 0 0\nv 1 0 0\nv 1 0 1\n";
const std::string kEnd = "vt 0 0\nvt 0 1\nvt 1 1\nvt 1 0\nvn 0 -1 0\n";
const std::string kFace = "f 1/1/1 2/2/1 3/3/1\n";

void check(const std::string& text) {
    std::string joined = text;
    const ObjSourceText source = joinObjLines("mesh.obj", joined);
    requireSameReading("mesh.obj", text, detail::parseObj(source.text));
}

struct Misread {
    std::string name;
    std::string text;
};

TEST(ObjReadingCheck, TextsThatTheLibraryReadsOtherwiseAreRefused) {
    const Misread cases[] = {
        {"byte order mark", "\xEF\xBB\xBFv 0 0 1\n" + kRest + kEnd + kFace},
        {"two marks", "\xEF\xBB\xBF\xEF\xBB\xBFv 0 0 1\n" + kRest + kEnd + kFace},
        {"tab after the keyword", "v\t0 0 1\n" + kRest + kEnd + kFace},
        {"tab before the keyword", "\tv 0 0 1\n" + kRest + kEnd + kFace},
        {"form feed", "\fv 0 0 1\n" + kRest + kEnd + kFace},
        {"continued name", "o foo\\\nv 0 0 1\n" + kRest + kEnd + kFace},
        {"lone carriage return", "# wall\rv 0 0 1\n" + kRest + kEnd + kFace},
        {"unknown keyword", "v 0 0 1\n" + kRest + "vtx 5 5\n" + kEnd + kFace},
        {"word that begins with f", "v 0 0 1\n" + kRest + kEnd + "faces 1 2 3\n" + kFace},
        {"UV that wraps", "v 0 0 1\n" + kRest + kEnd + "f 1/4294967297/1 2/2/1 3/3/1\n"},
    };
    for (const Misread& misread : cases) {
        SCOPED_TRACE(misread.name);
        EXPECT_THROW(check(misread.text), Error);
    }
}

TEST(ObjReadingCheck, ReferencesThatWrapAreRefused) {
    EXPECT_THROW(check("v 0 0 1\n" + kRest + kEnd + "f 1/1/1 2/2/1 4294967299/3/1\n"), Error);
    EXPECT_THROW(check("v 0 0 1\n" + kRest + kEnd + "f 1/1/1 2/2/1 3/3/1abc\n"), Error);
}

TEST(ObjReadingCheck, UnusualTextsOfTheSameMeshAreAccepted) {
    const std::string mesh = "v 0 0 1\n" + kRest + kEnd + kFace;
    const std::string texts[] = {mesh,
                                 "\xEF\xBB\xBF# wall\n" + mesh,
                                 "\t\n" + mesh,
                                 "# C:\\walls\\\r\n" + mesh,
                                 "vp 1 2 3\n" + mesh,
                                 "v 0 0\\\n 1\n" + kRest + kEnd + kFace,
                                 "v 0 0 1\r\n" + kRest + kEnd + kFace};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        EXPECT_NO_THROW(check(text));
    }
}

TEST(ObjReadingCheck, ConcaveFacesAreNoReason) {
    const std::string arrow = "v 0 0 0\nv 2 0 1\nv 0 0 2\nv 1 0 1\nvn 0 -1 0\nf 1//1 2//1 3//1 4//1\n";
    EXPECT_NO_THROW(check(arrow));
    EXPECT_NO_THROW(check("\t\n" + arrow));
}

TEST(ObjReadingCheck, ErrorNamesTheLine) {
    try {
        check("# wall\nv 9 9 9\nv\t0 0 1\n" + kRest + kEnd + kFace);
        ADD_FAILURE() << "not refused";
    } catch (const Error& error) {
        EXPECT_EQ(error.details().file, "mesh.obj");
        EXPECT_EQ(error.details().line, 3U);
    }
}

}  // namespace
}  // namespace quarn::test
