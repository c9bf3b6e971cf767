#include "ObjFaceScan.h"

#include <new>

#include "ObjDigits.h"
#include "ObjLines.h"

namespace quarn::detail {

namespace {

// The texts count from one, the lists from zero. The lowest value wraps.
std::int32_t readIndex(const char*& p) {
    return static_cast<std::int32_t>(readDigits(p) - 1);
}

// The line's end is left for the caller to find, from the place returned.
const char* scanFace(const char* keyword, std::vector<ObjFace>& faces) {
    ObjFace face;
    const char* p = keyword;
    for (ObjCorner& corner : face) p = scanCorner(nextArgument(p), corner);
    faces.push_back(face);

    // Each further corner makes a triangle with the first and the last one.
    for (p = nextArgument(p); *p != '\n' && *p != '\r'; p = nextArgument(p)) {
        if (*p == '\0') throw std::bad_alloc();
        face[1] = face[2];
        p = scanCorner(p, face[2]);
        faces.push_back(face);
    }
    return p;
}

}  // namespace

const char* scanCorner(const char* text, ObjCorner& corner) {
    corner = ObjCorner();
    const char* p = skipBlanks(text);
    corner.vertex = readIndex(p);
    if (*p != '/') return p;

    const char* const second = ++p;
    if (*second != '/') {
        p = skipBlanks(second);
        corner.textureCoordinate = readIndex(p);
        // Intended: a blank behind the first slash loses the normal.
        if (*second == ' ') return second;
        if (*p != '/') return p;
    }

    const char* const third = ++p;
    p = skipBlanks(third);
    corner.normal = readIndex(p);
    return *third == ' ' ? third : p;
}

void scanFaces(std::string_view text, std::vector<ObjFace>& faces) {
    faces.reserve(expectedLineCount(text.size()));
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++p) {
        p = skipBlanks(p);
        if (*p == 'f') p = scanFace(p, faces);
        p = lineEnd(p);
    }
}

}  // namespace quarn::detail
