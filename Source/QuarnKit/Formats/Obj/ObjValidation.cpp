#include "ObjValidation.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

namespace quarn {

namespace {

// Upper bound of what a triangle needs while its screen is built and told of: 750 to 1000 bytes, measured with shared
// and unshared vertices and with fans, and some room.
constexpr std::uint64_t kMemoryPerTriangle = 1400;

class Validator {
public:
    Validator(const ObjText& objText, float scale)
        : text(objText), maxCoordinate(kMaxObjNumber / std::max(1.0, std::abs(double{scale}))) {}

    void validateLine(const char* line);

    [[nodiscard]] const ObjCounts& counts() const { return result; }

private:
    void validateVertex(const char* line);
    void validateUV(const char* line);
    void validateFace(const char* line);
    void countIgnored(const char* line);
    const char* validateNumber(const char* p, double maxValue, const char* what) const;

    const ObjText& text;
    double maxCoordinate;
    ObjCounts result;
};

void Validator::validateLine(const char* line) {
    if (*line == 'v' && line[1] == ' ') return validateVertex(line);
    if (*line == 'v' && line[1] == 't') return validateUV(line);
    if (*line == 'f') return validateFace(line);
    if (*line == 'v' && line[1] == 'n') {
        ++result.normals;
        return;
    }
    countIgnored(line);
}

const char* Validator::validateNumber(const char* p, double maxValue, const char* what) const {
    p = detail::nextArgument(p);
    if (std::abs(detail::scanFloatReference(p).value) > maxValue)
        throw Error({.found = "found " + quotedExcerpt(wordAt(p)) + " as a " + what,
                     .expected = "a number up to " + numberText(maxValue),
                     .file = text.name,
                     .line = text.lineOf(p)});
    return p;
}

void Validator::validateVertex(const char* line) {
    ++result.vertices;
    const char* p = line;
    for (int i = 0; i < 3; ++i) p = validateNumber(p, maxCoordinate, "coordinate");
    int extras = 0;
    if (!isAtLineEnd(p))
        for (p = detail::nextArgument(p); !isAtLineEnd(p) && extras < 3; p = detail::nextArgument(p))
            ++extras;
    if (extras >= 3) ++result.ignored.colors;
    if (extras == 1 || extras == 2) ++result.ignored.weights;
}

void Validator::validateUV(const char* line) {
    ++result.uvs;
    const char* p = line;
    for (int i = 0; i < 2; ++i) p = validateNumber(p, kMaxObjNumber, "UV");
    if (!isAtLineEnd(p) && !isAtLineEnd(detail::nextArgument(p))) ++result.ignored.thirdUVs;
}

// Walks over the corners as the library does: at least three, and from then on to a line feed, or to a carriage return
// behind a blank. What comes first at a NUL never gets there.
void Validator::validateFace(const char* line) {
    ++result.faces;
    const char* p = line;
    for (int i = 0; i < 3; ++i) p = detail::nextArgument(p);
    ++result.triangles;
    for (p = detail::nextArgument(p); *p != '\n' && *p != '\r'; p = detail::nextArgument(p)) {
        if (*p == '\0' && p == text.text.data() + text.text.size())
            throw Error({.found = "found a face line that ends with the file",
                         .expected = "a line feed behind it: add an empty line at the end of the file",
                         .file = text.name,
                         .line = text.lineOf(line)});
        if (*p == '\0')
            throw Error({.found = "found a NUL byte in a face line",
                         .expected = "text alone",
                         .file = text.name,
                         .line = text.lineOf(p)});
        ++result.triangles;
    }
}

void Validator::countIgnored(const char* line) {
    const std::string_view word = wordAt(line);
    ObjCounts::Ignored& ignored = result.ignored;
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

void requireAny(std::uint64_t count, const std::string& what, const std::string& expected,
                const std::string& file) {
    if (count == 0)
        throw Error({.found = "found no " + what + " in the OBJ text", .expected = expected, .file = file});
}

}  // namespace

ObjCounts validateObj(const ObjText& text, float scale) {
    Validator validator(text, scale);
    forEachObjLine(text.text, [&](const char* line) { validator.validateLine(line); });
    const ObjCounts& result = validator.counts();
    requireAny(result.vertices, "vertex", R"(lines that begin with "v" and a blank)", text.name);
    requireAny(result.normals, "normal",
               R"(at least one line that begins with "vn", and faces that refer to it)", text.name);
    requireAny(result.faces, "face", R"(lines that begin with "f")", text.name);
    return result;
}

std::uint64_t meshMemory(std::uint64_t textSize, std::uint64_t triangles) {
    return textSize * kMeshMemoryPerByte + triangles * kMemoryPerTriangle;
}

void refuseMeshAbove(std::uint64_t maxMemory, const std::string& name, std::uint64_t textSize,
                     std::uint64_t triangles) {
    const std::uint64_t need = meshMemory(textSize, triangles);
    if (need > maxMemory)
        throw Error({.found = "found a mesh of " + std::to_string(triangles) + " triangles, which may need " +
                              memorySizeText(need) + " of memory and not " + memorySizeText(maxMemory),
                     .expected = "a smaller one",
                     .file = name,
                     .remedy = {.kind = RemedyKind::RaiseMemoryLimit}});
}

}  // namespace quarn
