#include <QuarnKit/Formats/Obj/Repair/ObjWordCheck.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/ObjValidation.h>
#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>

namespace quarn::test {
namespace {

using namespace std::string_literals;

const std::string kHead = "v 0 0 0\nv 1 0 0\nv 0 0 1\nvt 0 0\nvt 1 1\nvn 0 -1 0\n";  // lines 1 to 6
const std::string kFace = "f 1/1/1 2/2/1 3/1/1\n";

void parse(std::string text) {
    const ObjSourceText source = joinObjLines("a.obj", text);
    static_cast<void>(parseValidObj(source, 1.0F, std::numeric_limits<std::uint64_t>::max()));
}

// Returns the details of the error of a text; without place if there is none.
ErrorDetails errorOf(const std::string& text) {
    try {
        parse(text);
    } catch (const Error& error) {
        return error.details();
    }
    return {};
}

const std::string kNumber = "a number such as 1.5 or -2e-3; correct the line, or export the file again";

TEST(ObjWordCheck, CoordinatesThatAreNoNumbersAreRefused) {
    for (const char* word : {"nan", "inf", "abc", "1.5mm", "0x10", "1.#IND", "-1.#QNAN", "1.#INF", "1.#J",
                             "1.5.2", "--1", "1e", "1-2", "1,5,2", "e5", ".", "-"}) {
        const ErrorDetails error = errorOf(kHead + "v 0 0 " + word + "\n" + kFace);
        EXPECT_EQ(error.found, "found \"" + std::string(word) + "\" as a coordinate");
        EXPECT_EQ(error.expected, kNumber) << word;
        EXPECT_EQ(error.line, 7U) << word;
    }
    EXPECT_EQ(errorOf("v nan 0 0\n" + kHead + kFace).line, 1U);
    EXPECT_EQ(errorOf(kHead + "v 1 2 \\\n3 4\nv 1 \\\n2 x\n" + kFace).line, 9U);
    EXPECT_EQ(errorOf(kHead + "v \n" + kFace).found, "found a coordinate without numbers");
}

TEST(ObjWordCheck, DecimalCommasAreNamed) {
    const ErrorDetails error = errorOf(kHead + "v 1,5 0 0\n" + kFace);
    EXPECT_EQ(error.found, "found \"1,5\" as a coordinate");
    EXPECT_EQ(error.expected, "a decimal point, as in 1.5; export the file again without decimal commas");
    EXPECT_EQ(errorOf("v 0 0 0\nv 1 0 0\nv 0 0 1\nvn 0 0 1\nvt 0,25 1\nf 1/1/1 2/1/1 3/1/1\n").found,
              "found \"0,25\" as a UV");
}

TEST(ObjWordCheck, UVsThatAreNoNumbersAreRefusedIfAFaceRefersToThem) {
    for (const char* line : {"vt nan 0", "vt 0 0,5", "vt x", "vt", "vtx 1 y"}) {
        EXPECT_EQ(errorOf(kHead + line + "\n" + kFace).found, "") << line;
        EXPECT_EQ(errorOf(kHead + line + "\nf 1/1/1 2/3/1 3/1/1\n").line, 7U) << line;
    }
}

TEST(ObjWordCheck, NumbersThatTheLibraryMisreadsAreRefusedIfAFaceRefersToThem) {
    for (const char* line : {"v +1 0 0", "v 1\t2\t3", "v 1 2 \\\r\n3", "v 1 2 \\\r\n3 4"}) {
        EXPECT_EQ(errorOf(kHead + line + "\n" + kFace).found, "") << line;
        const ErrorDetails error = errorOf(kHead + line + "\nf 1//1 2//1 4//1\n");
        EXPECT_EQ(error.expected, "numbers without plus signs, separated by blanks") << line;
        EXPECT_EQ(error.line, 7U) << line;
    }
    EXPECT_EQ(errorOf(kHead + "vt +1 0\nf 1/1/1 2/3/1 3/1/1\n").found, "found \"vt +1 0\"");
}

TEST(ObjWordCheck, NumbersOfEveryFormAreRead) {
    for (const char* word :
         {"1", "-1", "1.", ".5", "-.5", "1e5", "1.5E-005", "2e+10", "00012", "0#x", "0 # 1,5", "0\t", "0\r",
          "1e4294967297", "-0", "+0", "1.23456789012345678", "0 nan", "0 255,1"})
        EXPECT_NO_THROW(parse(kHead + "v 0 0 " + word + "\nf 1//1 2//1 4//1\n")) << word;
    EXPECT_NO_THROW(parse(kHead + "v 1\nvn nan 1,5 x\n" + kFace + "v 9 9 9"));
    EXPECT_NO_THROW(parse(kHead + kFace + "v 9 9 9\0v x\n"s));
}

// Lines that share the words after them take no longer than others.
TEST(ObjWordCheck, TimeIsLinear) {
    std::string nuls = kHead;
    std::string continued = kHead;
    for (int i = 0; i < 200000; ++i) {
        nuls += "v +1 2\0"s;
        continued += "v +1 \\\r\n";
    }
    EXPECT_NO_THROW(parse(nuls + "\n" + kFace));
    EXPECT_NO_THROW(parse(continued + kFace));
}

// A text that was repaired is read.
TEST(ObjWordCheck, RepairedTextsAreRead) {
    for (const char* line :
         {"v +1 0 0", "v 1\t2\t3", "v 1 2 \\\r\n3", "vt nan 0", "vt 0,5 1", "vt", "vt +1 0"})
        for (const char* face : {"f 1/1/1 2/2/1 3/1/1\n", "f 1/1/1 2/4/1 3/1/1\n", "f 5 2 3\n"}) {
            const std::string text = kHead + "v 5 5 5\nvt 1 0\n" + line + "\nv 7 7 7\n" + face;
            EXPECT_NO_THROW(parse(repairObj("a.obj", text).text)) << text;
        }
}

}  // namespace
}  // namespace quarn::test
