#include <QuarnKit/Formats/Stl/StlMeshReader.h>

#include <gtest/gtest.h>

#include <QuarnKit/Base/Error.h>

namespace quarn::test {
namespace {

const std::string kTriangle =
    "facet normal 0 0 1\n outer loop\n  vertex 0 0 0\n  vertex 1 0 0\n  vertex 0 1.5e0 0\n "
    "endloop\nendfacet\n";

std::string solid(const std::string& facets) {
    return "solid wall\n" + facets + "endsolid wall\n";
}

// The notices of an operation, one line each, with their place.
class NoticeLines : public Observer {
public:
    void notify(const Notice& notice) override {
        text += withLocation(notice.file, notice.line, notice.text) + "\n";
    }

    std::string text;
};

MeshDocument meshOf(const std::string& text) {
    Observer ignored;
    return readStlMesh("a.stl", text, ignored);
}

std::string notesOf(const std::string& text, std::size_t expectedFaces) {
    NoticeLines lines;
    EXPECT_EQ(readStlMesh("a.stl", text, lines).faces.size(), expectedFaces);
    return lines.text;
}

ErrorDetails errorOf(const std::string& text) {
    try {
        static_cast<void>(meshOf(text));
    } catch (const Error& error) {
        return error.details();
    }
    ADD_FAILURE() << "no error";
    return {};
}

TEST(StlMeshReader, TextGivesTriangles) {
    const MeshDocument mesh = meshOf(solid(kTriangle));
    ASSERT_EQ(mesh.faces.size(), 1U);
    EXPECT_EQ(mesh.positions, (std::vector<std::array<float, 3>>{{0, 0, 0}, {1, 0, 0}, {0, 1.5, 0}}));
    EXPECT_EQ(mesh.faces[0][2].vertex, 2);
    EXPECT_EQ(mesh.faces[0][2].textureCoordinate, -1);
}

TEST(StlMeshReader, EqualPositionsAreOneVertex) {
    EXPECT_EQ(meshOf(solid(kTriangle + kTriangle)).positions.size(), 3U);
}

TEST(StlMeshReader, SeveralSolidsAndCapitalsAndCarriageReturnsAreRead) {
    std::string text = solid(kTriangle) + "\n" + solid(kTriangle);
    EXPECT_EQ(notesOf(text, 2), "");
    for (char& byte : text)
        if (byte >= 'a' && byte <= 'z' && byte != 'e') byte = static_cast<char>(byte - 'a' + 'A');
    EXPECT_EQ(notesOf(text, 2), "");
    std::string windows;
    for (const char byte : text) windows += byte == '\n' ? "\r\n" : std::string(1, byte);
    EXPECT_EQ(notesOf(windows, 2), "");
}

std::string replaced(std::string text, const std::string& part, const std::string& other) {
    return text.replace(text.find(part), part.size(), other);
}

TEST(StlMeshReader, KeywordsInTwoWordsAreRead) {
    const std::string text = solid(kTriangle + kTriangle);
    EXPECT_EQ(notesOf(replaced(text, "endsolid wall", "end solid wall"), 2), "");
    EXPECT_EQ(notesOf(replaced(text, "endfacet", "end facet"), 2), "");
    EXPECT_EQ(notesOf(replaced(text, "endloop", "END Loop"), 2), "");
    EXPECT_EQ(errorOf(replaced(text, "endloop", "end lop")).found, "found \"endlop\"");
    EXPECT_EQ(notesOf(text.substr(0, text.size() - 14) + "\nend", 2),
              "a.stl:17: the file ends within a solid; the triangles before its end are used\n");
}

TEST(StlMeshReader, TextAfterAFacetOnItsLineIsSkipped) {
    const std::string text = solid(kTriangle + kTriangle);
    EXPECT_EQ(notesOf(replaced(text, "endfacet", "endfacet 1 # the first"), 2), "");
    EXPECT_EQ(notesOf(replaced(text, "endfacet\n", "endfacet 1 "), 2), "");
    EXPECT_EQ(errorOf(replaced(text, "endfacet\n", "endfacet\n1\n")).found, "found \"1\"");
}

TEST(StlMeshReader, AControlCharacterInATextIsAnErrorOfItsWord) {
    const ErrorDetails error =
        errorOf(replaced(solid(kTriangle + kTriangle + kTriangle), "1.5e0", "1.5\1e0"));
    EXPECT_EQ(error.expected, "a number");
    EXPECT_EQ(error.line, 6U);
}

TEST(StlMeshReader, ALoopOfFourCornersIsAFan) {
    EXPECT_EQ(notesOf("solid\nfacet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 1 1 0 vertex 0 "
                      "1 0 endloop "
                      "endfacet endsolid",
                      2),
              "");
}

TEST(StlMeshReader, ACutTextGivesWhatStandsBeforeTheCut) {
    const std::string text = solid(kTriangle + kTriangle);
    EXPECT_EQ(notesOf(text.substr(0, text.size() - 30), 1),
              "a.stl:14: the file ends within a solid; the triangles before its end are used\n");
}

TEST(StlMeshReader, AWordThatDoesNotBelongThereIsAnErrorWithItsLine) {
    std::string text = solid(kTriangle);
    text.replace(text.find("endloop"), 7, "endlopp");
    const ErrorDetails error = errorOf(text);
    EXPECT_EQ(error.line, 7U);
    EXPECT_EQ(error.found, "found \"endlopp\"");
    EXPECT_EQ(error.expected, R"("vertex" or "endloop")");
}

TEST(StlMeshReader, NumbersThatAreNotFiniteAreErrors) {
    for (const char* number : {"nan", "inf", "1e39", "-1e400"}) {
        std::string text = solid(kTriangle);
        text.replace(text.find("1.5e0"), 5, number);
        EXPECT_EQ(errorOf(text).found, "found a coordinate that is not finite in triangle 1") << number;
    }
}

TEST(StlMeshReader, ANumberBelowTheLeastFloatIsZero) {
    std::string text = solid(kTriangle);
    text.replace(text.find("1.5e0"), 5, "1e-90");
    EXPECT_EQ(meshOf(text).positions.size(), 2U);
}

TEST(StlMeshReader, NoTriangleIsAnError) {
    EXPECT_EQ(errorOf(solid("")).found, "found no triangle in the STL file");
    EXPECT_EQ(errorOf(std::string(84, '\0')).found, "found no triangle in the STL file");
    EXPECT_EQ(errorOf("not STL").found, "found \"not\"");
    EXPECT_EQ(errorOf(std::string("\0\1", 2)).found, "found 2 bytes");
}

}  // namespace
}  // namespace quarn::test
