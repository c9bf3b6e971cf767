#include "ObjReferences.h"

#include <algorithm>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>

namespace quarn {

namespace {

using detail::isObjIndexInRange;

detail::ObjCorner cornerAt(const char* p) {
    detail::ObjCorner corner;
    detail::scanCorner(p, corner);
    return corner;
}

bool isBad(const detail::ObjCorner& corner, const ObjCounts& counts) {
    return !isObjIndexInRange(corner.vertex, counts.vertices) ||
           !isObjIndexInRange(corner.normal, counts.normals);
}

// Returns the first corner that \p isWanted accepts; null if there is none. Each face has at least
// three corners, as in the library.
template <class IsWanted>
const char* findCorner(const ObjSourceText& text, IsWanted isWanted) {
    const char* wanted = nullptr;
    forEachObjLine(text.text, [&](const char* line) {
        if (wanted != nullptr || *line != 'f') return;
        const char* p = detail::nextArgument(line);
        for (int i = 0; i < 3 || (*p != '\n' && *p != '\r' && *p != '\0'); ++i, p = detail::nextArgument(p)) {
            if (!isWanted(cornerAt(p))) continue;
            wanted = p;
            return;
        }
    });
    return wanted;
}

std::uint64_t lineOfCorner(const ObjSourceText& text, const char* corner) {
    return corner == nullptr ? 0 : text.lineOf(corner);
}

bool isOutside(const char* p) {
    const float value = detail::scanFloatReference(p).value;
    return value < 0.0F || value > 1.0F;
}

// Returns for each UV whether it is outside of 0 to 1.
std::vector<bool> findUVsOutside(const ObjSourceText& text) {
    std::vector<bool> outside;
    forEachObjLine(text.text, [&](const char* line) {
        if (*line != 'v' || line[1] != 't') return;
        const char* const u = detail::nextArgument(line);
        outside.push_back(isOutside(u) || isOutside(detail::nextArgument(u)));
    });
    return outside;
}

std::string expectedFor(const std::string& what, std::uint64_t count, const std::string& form) {
    return "the number of a " + what + " from 1 to " + std::to_string(count) + ", as in " + form;
}

Error badReferenceError(const ObjSourceText& text, const char* corner, const ObjCounts& counts) {
    const std::string_view word = wordAt(corner);
    const bool isVertexBad = !isObjIndexInRange(cornerAt(corner).vertex, counts.vertices);
    return Error({.found = word.empty() ? "found a face with fewer than three corners"
                                        : "found " + quotedExcerpt(word) + " as a corner of a face",
                  .expected = isVertexBad ? expectedFor("vertex", counts.vertices, "1/1/1")
                                          : expectedFor("normal", counts.normals, "1/1/1 or 1//1"),
                  .file = text.name,
                  .line = text.lineOf(corner)});
}

}  // namespace

void requireValidReferences(const ObjSourceText& text, const detail::ObjData& objData) {
    const ObjCounts counts = countsOf(objData);
    const auto isBadCorner = [&](const detail::ObjCorner& corner) { return isBad(corner, counts); };
    const bool isValid = std::none_of(
        objData.faces.begin(), objData.faces.end(),
        [&](const detail::ObjFace& face) { return std::any_of(face.begin(), face.end(), isBadCorner); });
    if (isValid) return;
    const char* const corner = findCorner(text, isBadCorner);
    if (corner == nullptr) throw Error({.found = "the mesh cannot be loaded", .file = text.name});
    throw badReferenceError(text, corner, counts);
}

std::uint64_t findLineWithoutUV(const ObjSourceText& text, const ObjCounts& counts) {
    return lineOfCorner(text, findCorner(text, [&](const detail::ObjCorner& corner) {
                            return !isObjIndexInRange(corner.textureCoordinate, counts.uvs);
                        }));
}

std::uint64_t findLineWithUVOutside(const ObjSourceText& text, const ObjCounts& counts) {
    const std::vector<bool> outside = findUVsOutside(text);
    return lineOfCorner(text, findCorner(text, [&](const detail::ObjCorner& corner) {
                            return isObjIndexInRange(corner.textureCoordinate, counts.uvs) &&
                                   outside[static_cast<std::size_t>(corner.textureCoordinate)];
                        }));
}

}  // namespace quarn
