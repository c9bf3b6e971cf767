#include "ObjReferences.h"

#include <vector>

#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/Detail/Obj/ObjDigits.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

namespace quarn {

namespace {

// Numbers of a corner as they stand in the text; 0 for what it does not tell.
struct Corner {
    std::uint32_t vertex = 0;
    std::uint32_t uv = 0;
    std::uint32_t normal = 0;
};

// Intended: a blank behind a slash is skipped, and behind the first slash it loses the normal, as in the library.
Corner cornerAt(const char* p) {
    Corner corner;
    corner.vertex = detail::readDigits(p);
    if (*p != '/') return corner;
    const char* const second = ++p;
    if (*second != '/') {
        p = detail::skipBlanks(second);
        corner.uv = detail::readDigits(p);
        if (*second == ' ' || *p != '/') return corner;
    }
    p = detail::skipBlanks(p + 1);
    corner.normal = detail::readDigits(p);
    return corner;
}

bool isWithin(std::uint32_t number, std::uint64_t count) {
    return number >= 1 && number <= count;
}

// The first corner that \p isWanted accepts; null where there is none. A face has three corners, whatever it tells.
template <class IsWanted>
const char* findCorner(const ObjText& text, IsWanted isWanted) {
    const char* found = nullptr;
    forEachObjLine(text.text, [&](const char* line) {
        if (found != nullptr || *line != 'f') return;
        const char* p = detail::nextArgument(line);
        for (int i = 0; i < 3 || (*p != '\n' && *p != '\r' && *p != '\0'); ++i, p = detail::nextArgument(p)) {
            if (!isWanted(cornerAt(p))) continue;
            found = p;
            return;
        }
    });
    return found;
}

std::uint64_t lineOfCorner(const ObjText& text, const char* corner) {
    return corner == nullptr ? 0 : text.lineOf(corner);
}

bool isOutside(const char* p) {
    const float value = detail::scanFloatReference(p).value;
    return value < 0.0F || value > 1.0F;
}

std::vector<bool> uvsOutside(const ObjText& text) {
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

}  // namespace

Error badReferenceError(const ObjText& text, const ObjCounts& counts) {
    const char* const corner = findCorner(text, [&](const Corner& candidate) {
        return !isWithin(candidate.vertex, counts.vertices) || !isWithin(candidate.normal, counts.normals);
    });
    if (corner == nullptr) return Error({.found = "the mesh cannot be loaded", .file = text.name});
    const std::string_view word = wordAt(corner);
    const bool isVertexBad = !isWithin(cornerAt(corner).vertex, counts.vertices);
    return Error({.found = word.empty() ? "found a face with fewer than three corners"
                                        : "found " + quotedExcerpt(word) + " as a corner of a face",
                  .expected = isVertexBad ? expectedFor("vertex", counts.vertices, "1/1/1")
                                          : expectedFor("normal", counts.normals, "1/1/1 or 1//1"),
                  .file = text.name,
                  .line = text.lineOf(corner)});
}

std::uint64_t lineWithoutUV(const ObjText& text, const ObjCounts& counts) {
    return lineOfCorner(
        text, findCorner(text, [&](const Corner& corner) { return !isWithin(corner.uv, counts.uvs); }));
}

std::uint64_t lineWithUVOutside(const ObjText& text, const ObjCounts& counts) {
    const std::vector<bool> outside = uvsOutside(text);
    return lineOfCorner(text, findCorner(text, [&](const Corner& corner) {
                            return isWithin(corner.uv, counts.uvs) && outside[corner.uv - 1];
                        }));
}

}  // namespace quarn
