#include "ObjValidation.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>

#include "MeshMemory.h"
#include "MissingFaces.h"
#include "Repair/ObjWordCheck.h"

namespace quarn {

namespace {

double maxCoordinateOf(float scale) {
    return kMaxObjNumber / std::max(1.0, std::abs(double{scale}));
}

template <std::size_t N>
bool areWithin(const std::vector<std::array<float, N>>& list, double maxValue) {
    return std::all_of(list.begin(), list.end(), [&](const std::array<float, N>& values) {
        return std::all_of(values.begin(), values.end(),
                           [&](float value) { return std::abs(value) <= maxValue; });
    });
}

bool isValid(const detail::ObjData& objData, float scale) {
    const detail::ObjVertexData& data = objData.vertexData;
    return !data.vertices.empty() && data.normalCount > 0 && !objData.faces.empty() &&
           areWithin(data.vertices, maxCoordinateOf(scale)) &&
           areWithin(data.textureCoordinates, kMaxObjNumber);
}

// Searches the lines of a text for the first one that is invalid, and counts them.
class LineValidator {
public:
    LineValidator(const ObjSourceText& objText, float scale)
        : text(objText), maxCoordinate(maxCoordinateOf(scale)) {}

    void validateLine(const char* line);

    [[nodiscard]] const ObjCounts& counts() const { return result; }

private:
    void validateFace(const char* line);
    void validateNumbers(const char* line, int count, double maxValue, const char* what) const;

    const ObjSourceText& text;
    double maxCoordinate;
    ObjCounts result;
};

void LineValidator::validateLine(const char* line) {
    if (*line == 'f') return validateFace(line);
    if (*line != 'v') return;
    if (line[1] == ' ') {
        ++result.vertices;
        validateNumbers(line, 3, maxCoordinate, "coordinate");
    }
    if (line[1] == 't') {
        ++result.uvs;
        validateNumbers(line, 2, kMaxObjNumber, "UV");
    }
    if (line[1] == 'n') ++result.normals;
}

void LineValidator::validateNumbers(const char* line, int count, double maxValue, const char* what) const {
    const char* p = line;
    for (int i = 0; i < count; ++i) {
        p = detail::nextArgument(p);
        if (std::abs(detail::scanFloatReference(p).value) > maxValue)
            throw Error({.found = "found " + quotedExcerpt(wordAt(p)) + " as a " + what,
                         .expected = "a number up to " + numberText(maxValue),
                         .file = text.name,
                         .line = text.lineOf(p)});
    }
}

// Walks over the corners as the library does: at least three, and then up to a line feed, or to a
// carriage return after a blank. A NUL before that would never end the face.
void LineValidator::validateFace(const char* line) {
    const char* p = line;
    for (int i = 0; i < 3; ++i) p = detail::nextArgument(p);
    ++result.triangles;
    for (p = detail::nextArgument(p); *p != '\n' && *p != '\r'; p = detail::nextArgument(p)) {
        if (*p == '\0' && p == text.text.data() + text.text.size())
            throw Error({.found = "found a face line that ends with the file",
                         .expected = "a line feed after it: add an empty line at the end of the file",
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

void requireAny(std::uint64_t count, const std::string& what, const std::string& expected,
                const std::string& file) {
    if (count == 0)
        throw Error({.found = "found no " + what + " in the OBJ text", .expected = expected, .file = file});
}

// Returns the data of a text; nothing for an unterminated face, or if the memory is exceeded. The
// words are checked at the same time.
std::optional<detail::ObjData> parseWithin(std::uint64_t maxMemory, std::string_view text,
                                           ObjWordCheck& words) {
    try {
        return detail::parseObj(text, {.maxFaceCount = maxTriangleCount(text.size(), maxMemory),
                                       .meanwhile = [&] { words.read(text); }});
    } catch (const std::bad_alloc&) {
        return {};
    }
}

// Throws the error of the first line that is invalid, or else that of the whole text.
void refuseInvalid(const ObjSourceText& text, float scale, std::uint64_t maxMemory) {
    LineValidator validator(text, scale);
    forEachObjLine(text.text, [&](const char* line) { validator.validateLine(line); });
    const ObjCounts& counts = validator.counts();
    requireAny(counts.vertices, "vertex", R"(lines that begin with "v" and a blank)", text.name);
    if (counts.triangles == 0) refuseMissingFaces(text.name, text.text);
    requireAny(counts.normals, "normal",
               R"(at least one line that begins with "vn", and faces that refer to it)", text.name);
    refuseMeshAbove(maxMemory, text.name, {.textBytes = text.text.size(), .triangles = counts.triangles});
}

}  // namespace

ObjCounts countsOf(const detail::ObjData& objData) {
    return {.vertices = objData.vertexData.vertices.size(),
            .uvs = objData.vertexData.textureCoordinates.size(),
            .normals = objData.vertexData.normalCount,
            .triangles = objData.faces.size()};
}

detail::ObjData parseValidObj(const ObjSourceText& text, float scale, std::uint64_t maxMemory) {
    ObjWordCheck words;
    std::optional<detail::ObjData> objData = parseWithin(maxMemory, text.text, words);
    words.requireNumbers(
        text, objData ? std::span(std::as_const(objData->faces)) : std::span<const detail::ObjFace>());
    if (objData && isValid(*objData, scale)) return std::move(*objData);
    objData.reset();
    refuseInvalid(text, scale, maxMemory);
    // The text is valid, so the process is out of memory.
    throw std::bad_alloc();
}

}  // namespace quarn
