#include "ObjValidation.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

#include "Base/Diagnostics.h"
#include "Base/ToolError.h"

namespace quarn {

namespace {

// Upper bound of what a triangle needs while its screen is built and told of: 750 to 1000 bytes, measured with shared
// and unshared vertices and with fans, and some room.
constexpr std::uint64_t kMemoryPerTriangle = 1400;

class Examiner {
public:
    Examiner(const ObjText& examinedText, float scale)
        : text(examinedText), largestCoordinate(kLargestObjNumber / std::max(1.0, std::abs(double{scale}))) {}

    void examine(const char* line);

    [[nodiscard]] const ObjContents& contents() const { return found; }

private:
    void examineVertex(const char* line);
    void examineUV(const char* line);
    void examineFace(const char* line);
    void countIgnored(const char* line);
    const char* examineNumber(const char* p, double largest, const char* what) const;

    const ObjText& text;
    double largestCoordinate;
    ObjContents found;
};

void Examiner::examine(const char* line) {
    if (*line == 'v' && line[1] == ' ') return examineVertex(line);
    if (*line == 'v' && line[1] == 't') return examineUV(line);
    if (*line == 'f') return examineFace(line);
    if (*line == 'v' && line[1] == 'n') {
        ++found.normals;
        return;
    }
    countIgnored(line);
}

const char* Examiner::examineNumber(const char* p, double largest, const char* what) const {
    p = nextArgument(p);
    if (std::abs(scanFloatPlainly(p).value) > largest)
        throw ToolError{.found = "found " + quotedExcerpt(wordAt(p)) + " as a " + what,
                        .expected = "a number up to " + numberText(largest),
                        .file = text.name,
                        .line = text.lineOf(p)};
    return p;
}

void Examiner::examineVertex(const char* line) {
    ++found.vertices;
    const char* p = line;
    for (int i = 0; i < 3; ++i) p = examineNumber(p, largestCoordinate, "coordinate");
    int extras = 0;
    if (!isAtEnd(p))
        for (p = nextArgument(p); !isAtEnd(p) && extras < 3; p = nextArgument(p)) ++extras;
    if (extras >= 3) ++found.ignored.colors;
    if (extras == 1 || extras == 2) ++found.ignored.weights;
}

void Examiner::examineUV(const char* line) {
    ++found.uvs;
    const char* p = line;
    for (int i = 0; i < 2; ++i) p = examineNumber(p, kLargestObjNumber, "UV");
    if (!isAtEnd(p) && !isAtEnd(nextArgument(p))) ++found.ignored.thirdUVs;
}

// Walks over the corners as the library does: at least three, and from then on to a line feed, or to a carriage return
// behind a blank. What comes first at a NUL never gets there.
void Examiner::examineFace(const char* line) {
    ++found.faces;
    const char* p = line;
    for (int i = 0; i < 3; ++i) p = nextArgument(p);
    ++found.triangles;
    for (p = nextArgument(p); *p != '\n' && *p != '\r'; p = nextArgument(p)) {
        if (*p == '\0' && p == text.text.data() + text.text.size())
            throw ToolError{.found = "found a face line that ends with the file",
                            .expected = "a line feed behind it: add an empty line at the end of the file",
                            .file = text.name,
                            .line = text.lineOf(line)};
        if (*p == '\0')
            throw ToolError{.found = "found a NUL byte in a face line",
                            .expected = "text alone",
                            .file = text.name,
                            .line = text.lineOf(p)};
        ++found.triangles;
    }
}

void Examiner::countIgnored(const char* line) {
    const std::string_view word = wordAt(line);
    ObjContents::Ignored& ignored = found.ignored;
    if (word.empty() && *line != '\t') return;
    if (word.starts_with('#') || word.starts_with('$')) return;
    if (word == "usemtl")
        ++ignored.materials;
    else if (word == "mtllib")
        ++ignored.materialLibraries;
    else if (word == "g")
        ++ignored.groups;
    else if (word == "o")
        ++ignored.objects;
    else if (word == "s")
        ++ignored.smoothing;
    else
        ++ignored.otherLines;
}

void refuseNone(std::uint64_t count, const std::string& what, const std::string& expected,
                const std::string& file) {
    if (count == 0)
        throw ToolError{.found = "found no " + what + " in the OBJ text", .expected = expected, .file = file};
}

}  // namespace

ObjContents examineObj(const ObjText& text, float scale) {
    Examiner examiner(text, scale);
    forEachObjLine(text.text, [&](const char* line) { examiner.examine(line); });
    const ObjContents& found = examiner.contents();
    refuseNone(found.vertices, "vertex", R"(lines that begin with "v" and a blank)", text.name);
    refuseNone(found.normals, "normal",
               R"(at least one line that begins with "vn", and faces that refer to it)", text.name);
    refuseNone(found.faces, "face", R"(lines that begin with "f")", text.name);
    return found;
}

std::uint64_t meshMemory(std::uint64_t textSize, std::uint64_t triangles) {
    return textSize * kMeshMemoryPerByte + triangles * kMemoryPerTriangle;
}

void refuseMeshAbove(std::uint64_t maxMemory, const std::string& name, std::uint64_t textSize,
                     std::uint64_t triangles) {
    const std::uint64_t need = meshMemory(textSize, triangles);
    if (need > maxMemory)
        throw ToolError{.found = "found a mesh of " + std::to_string(triangles) +
                                 " triangles, which may need " + memorySizeText(need) +
                                 " of memory and not " + memorySizeText(maxMemory),
                        .expected = "a smaller one, or a greater --max-memory",
                        .file = name};
}

}  // namespace quarn
