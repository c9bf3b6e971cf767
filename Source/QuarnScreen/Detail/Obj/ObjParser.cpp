#include "ObjParser.h"

#include <array>
#include <cstdint>
#include <exception>
#include <new>
#include <thread>

#include "ObjNumbers.h"
#include "ObjText.h"

namespace quarn::detail {

namespace {

// Texts count from one, lists from zero. The lowest value wraps.
std::int32_t readIndex(const char*& p) {
    return static_cast<std::int32_t>(readDigits(p) - 1);
}

// Returns a place on the line from which the caller searches for its end.
const char* scanFace(const char* keyword, std::vector<ObjFace>& faces, std::size_t maxCount) {
    const auto append = [&](const ObjFace& face) {
        if (faces.size() == maxCount) throw std::bad_alloc();
        faces.push_back(face);
    };
    ObjFace face;
    const char* p = keyword;
    for (ObjCorner& corner : face) p = scanCorner(nextArgument(p), corner);
    append(face);

    // Each further corner forms a triangle with the first and the last corner.
    for (p = nextArgument(p); *p != '\n' && *p != '\r'; p = nextArgument(p)) {
        if (*p == '\0') throw std::bad_alloc();
        face[1] = face[2];
        p = scanCorner(p, face[2]);
        append(face);
    }
    return p;
}

// Appends a line of N floats. Returns a place on the line from which the caller searches for its
// end.
template <std::size_t N>
const char* scanValues(const char* keyword, const char* end, std::vector<std::array<float, N>>& list) {
    std::array<float, N> values{};
    const char* p = keyword;
    for (float& value : values) {
        const ScannedFloat scanned = scanFloat(nextArgument(p), end);
        value = scanned.value;
        p = scanned.stop;
    }
    list.push_back(values);
    return p;
}

// Runs a scan and returns its exception.
template <class Scan>
std::exception_ptr failureOf(const Scan& scan) noexcept {
    try {
        scan();
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
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
        // Intended: a blank after the first slash loses the normal.
        if (*second == ' ') return second;
        if (*p != '/') return p;
    }

    const char* const third = ++p;
    p = skipBlanks(third);
    corner.normal = readIndex(p);
    return *third == ' ' ? third : p;
}

void scanFaces(std::string_view text, std::vector<ObjFace>& faces, std::size_t maxCount) {
    faces.reserve(expectedLineCount(text.size()));
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++p) {
        p = skipBlanks(p);
        if (*p == 'f') p = scanFace(p, faces, maxCount);
        p = lineEnd(p);
    }
}

void scanVertexData(std::string_view text, ObjVertexData& data) {
    data.vertices.reserve(expectedLineCount(text.size()));
    data.textureCoordinates.reserve(expectedLineCount(text.size()));
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++p) {
        p = skipBlanks(p);
        if (*p == 'v') {
            const char kind = p[1];
            if (kind == ' ')
                p = scanValues(p, end, data.vertices);
            else if (kind == 't')
                p = scanValues(p, end, data.textureCoordinates);
            else if (kind == 'n')
                ++data.normalCount;
        }
        p = lineEnd(p);
    }
}

ObjData parseObj(std::string_view text, const ObjParseTasks& tasks) {
    ObjData objData;
    std::exception_ptr faceFailure;
    std::exception_ptr vertexFailure;
    {
        const std::jthread faceScan([&] {
            faceFailure = failureOf([&] {
                scanFaces(text, objData.faces, tasks.maxFaceCount);
                if (tasks.afterFaces) tasks.afterFaces(objData.faces);
            });
        });
        const std::jthread vertexScan([&] {
            vertexFailure = failureOf([&] {
                scanVertexData(text, objData.vertexData);
                if (tasks.afterVertexData) tasks.afterVertexData();
            });
        });
        if (tasks.meanwhile) tasks.meanwhile();
    }
    if (faceFailure) std::rethrow_exception(faceFailure);
    if (vertexFailure) std::rethrow_exception(vertexFailure);
    return objData;
}

}  // namespace quarn::detail
