#include <gtest/gtest.h>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>

namespace quarn::test {
namespace {

const std::string kHead = "v 0 0 0\nv 1 0 0\nv 0 0 1\nvt 0 0\nvn 0 -1 0\n";  // lines 1 to 5
const std::string kFace = "f 1//1 2//1 3//1\n";

ErrorDetails errorOf(const std::string& text) {
    try {
        static_cast<void>(repairObj("a.obj", text));
    } catch (const Error& error) {
        return error.details();
    }
    ADD_FAILURE() << "no error for " << text;
    return {};
}

void expectError(const std::string& text, std::uint64_t line, const std::string& found) {
    const ErrorDetails error = errorOf(text);
    EXPECT_EQ(error.file, "a.obj");
    EXPECT_EQ(error.line, line) << text;
    EXPECT_EQ(error.found, found);
    EXPECT_EQ(error.kind, ErrorKind::BadInput);
}

void expectCoordinateError(const std::string& word) {
    expectError("\n" + kHead + "v 0 " + word + " 0\n" + kFace, 7, "found \"" + word + "\" as a coordinate");
}

void expectCornerError(const std::string& corner) {
    expectError(kHead + "\r\r\n" + "f 1//1 \\\n 2//1 " + corner + "\n", 7,
                "found \"" + corner + "\" as a corner of a face");
}

TEST(ObjRepairerErrors, CoordinatesAreNumbers) {
    for (const char* word : {"nan", "-inf", "1,5", "1.#IND", "-1.#QNAN", "1.#INF", "1.#J", "0x1", "1.5.2",
                             "--1", "1e", "1e+", ".", "e5", "1.0f", "+-1", "x"})
        expectCoordinateError(word);
    expectError(kHead + "v\n" + kFace, 6, "found a vertex without coordinates");
    expectError(kHead + "v # 1 2 3\n" + kFace, 6, "found a vertex without coordinates");
}

TEST(ObjRepairerErrors, NumbersOfEveryUsualFormAreTaken) {
    for (const char* word :
         {"1", "-1", "+1", "1.", ".5", "-.5", "1e5", "1.5E-005", "2e+10", "00012", "1.23456789012345678"})
        EXPECT_NO_THROW(static_cast<void>(repairObj("a.obj", kHead + "v 0 " + word + " 0\n" + kFace)))
            << word;
}

TEST(ObjRepairerErrors, CornersHaveAVertex) {
    for (const char* corner : {"x", "/1/1", "//1", "1/2/3/4", "1.5", "1/x", "1//x", "+1", "1:1", "1,2",
                               "99999999999999999999", "1/1/-"})
        expectCornerError(corner);
}

TEST(ObjRepairerErrors, CornersReferToVerticesThatAreThere) {
    for (const char* corner : {"0//1", "4//1", "-4//1", "-9223372036854775808", "9223372036854775807"})
        expectCornerError(corner);
    EXPECT_EQ(errorOf(kHead + "f 1 2 4\n").expected, "the number of a vertex from 1 to 3");
    // Relative ones count from their line, absolute ones do not.
    expectError("f -1 1 1\n" + kHead, 1, "found \"-1\" as a corner of a face");
}

TEST(ObjRepairerErrors, ATextHasVerticesAndFaces) {
    expectError("", 0, "found no vertex in the OBJ text");
    expectError("vn 0 0 1\n" + kFace, 0, "found no vertex in the OBJ text");
    expectError(kHead, 0, "found no face in the OBJ text");
    expectError(kHead + "f 1 2\n", 0, "found no face of three corners in the OBJ text");
}

TEST(ObjRepairerErrors, UTF16IsRefused) {
    expectError("\xFF\xFEv", 0, "found UTF-16 text");
    expectError("\xFE\xFFv", 0, "found UTF-16 text");
    expectError("\xEF\xBB\xBF\xFF\xFE#\n" + kHead + "f 1 2 3\n", 0, "found UTF-16 text");
}

}  // namespace
}  // namespace quarn::test
