#include "Reference/Timed/ReferenceObjLoad.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <thread>

#include <QuarnScreen/FlatScreen.h>

namespace quarn::test {
namespace {

// Opens the digest that a load computes.
struct Digest : FlatScreen {
    using ScreenGeometry::calculateHash;
};

using Floats3 = std::array<float, 3>;
using Floats2 = std::array<float, 2>;
// Vertex, UV and normal of each corner.
using Face = std::array<std::array<int, 3>, 3>;

const char* skipBlanks(const char* p) {
    while (*p == ' ') ++p;
    return p;
}

const char* nextArgument(const char* p) {
    while (*p != ' ' && *p != '\n' && *p != '\0') ++p;
    return skipBlanks(p);
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

float readFloat(const char* p) {
    std::uint32_t mantissa = 0;
    int scale = 0;
    bool isNegative = false;
    bool isBehindPoint = false;
    for (;; ++p) {
        if (isDigit(*p)) {
            if (mantissa < 16777216) {
                mantissa = mantissa * 10 + static_cast<std::uint32_t>(*p - '0');
                if (isBehindPoint) ++scale;
            } else if (!isBehindPoint) {
                --scale;
            }
        } else if (*p == '-') {
            isNegative = true;
        } else if (*p == '.') {
            isBehindPoint = true;
        } else {
            break;
        }
    }
    if (mantissa == 0) return 0.0F;
    if (*p == 'e' || *p == 'E') {
        int exponent = 0;
        bool isExponentNegative = false;
        for (++p;; ++p) {
            if (isDigit(*p))
                exponent = exponent * 10 + (*p - '0');
            else if (*p == '-')
                isExponentNegative = true;
            else if (*p != '+')
                break;
        }
        scale -= isExponentNegative ? -exponent : exponent;
    }
    double value = mantissa;
    for (; scale > 0; --scale) value *= 0.1;
    for (; scale < 0; ++scale) value *= 10.0;
    const auto result = static_cast<float>(value);
    return isNegative ? -result : result;
}

template <std::size_t N>
void readFloats(const char* p, std::vector<std::array<float, N>>& list) {
    std::array<float, N>& values = list.emplace_back();
    for (float& value : values) {
        value = readFloat(p);
        p = nextArgument(p);
    }
}

int readIndex(const char* p) {
    int value = 0;
    for (; isDigit(*p); ++p) value = value * 10 + (*p - '0');
    return value - 1;
}

const char* skipDigits(const char* p) {
    while (isDigit(*p)) ++p;
    return p;
}

void readCorner(const char* p, std::array<int, 3>& corner) {
    p = skipBlanks(p);
    corner = {readIndex(p), -1, -1};
    p = skipDigits(p);
    if (*p != '/') return;
    if (p[1] == '/') {
        corner[2] = readIndex(skipBlanks(p + 2));
        return;
    }
    corner[1] = readIndex(skipBlanks(p + 1));
    p = skipDigits(p + 1);
    if (*p == '/') corner[2] = readIndex(skipBlanks(p + 1));
}

void readFace(const char* p, std::vector<Face>& faces) {
    faces.emplace_back();
    for (std::array<int, 3>& corner : faces.back()) {
        readCorner(p, corner);
        p = nextArgument(p);
    }
    while (*p != '\n' && *p != '\r') {
        const Face before = faces.back();
        Face& face = faces.emplace_back();
        face[0] = before[0];
        face[1] = before[2];
        readCorner(p, face[2]);
        p = nextArgument(p);
    }
}

// Calls `action(keyword, first argument)` for each line.
template <class Action>
void forEachLine(const std::string& text, const Action& action) {
    const char* p = text.data();
    const char* const end = p + text.size();
    while (p < end) {
        p = skipBlanks(p);
        action(p, nextArgument(p));
        while (*p != '\n' && *p != '\0') ++p;
        ++p;
    }
}

void blankContinuations(std::string& text) {
    const std::function<void(std::string*, int, int)> blank = [](std::string* all, int from, int to) {
        for (int i = from; i < to; ++i) {
            char* const p = all->data() + i;
            if (p[0] == '\\' && p[1] == '\n') {
                p[0] = p[1] = ' ';
                ++i;
            }
        }
    };
    const int size = static_cast<int>(text.size());
    const int piece = std::max(size / 256, 1000000);
    std::vector<std::thread> threads;
    for (int from = 0; from < size; from += piece)
        threads.emplace_back(blank, &text, from, std::min(from + piece, size - 1));
    for (std::thread& thread : threads) thread.join();
}

}  // namespace

void ReferenceObjLoad::load(std::istream& in) {
    in.seekg(0, std::ios::end);
    text.resize(static_cast<std::size_t>(in.tellg()));
    in.seekg(0);
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    blankContinuations(text);

    std::vector<Floats3> vertices;
    std::vector<Floats2> uvs;
    std::vector<Floats3> normals;
    std::vector<Face> faces;
    {
        const std::string copy = text;
        std::thread faceThread([&] {
            forEachLine(copy, [&](const char* keyword, const char* argument) {
                if (*keyword == 'f') readFace(argument, faces);
            });
        });
        std::thread vertexThread([&] {
            forEachLine(copy, [&](const char* keyword, const char* argument) {
                if (std::strncmp(keyword, "v ", 2) == 0) readFloats(argument, vertices);
                if (std::strncmp(keyword, "vt", 2) == 0) readFloats(argument, uvs);
                if (std::strncmp(keyword, "vn", 2) == 0) readFloats(argument, normals);
            });
        });
        faceThread.join();
        vertexThread.join();
    }
    for (const Face& face : faces) {
        Triangle triangle;
        for (std::size_t i = 0; i < 3; ++i) {
            const Floats3& position = vertices.at(static_cast<std::size_t>(face[i][0]));
            const Floats2& uv = uvs.at(static_cast<std::size_t>(face[i][1]));
            const Floats3& normal = normals.at(static_cast<std::size_t>(face[i][2]));
            triangle.vertices[i].position = {position[0], position[1], position[2]};
            triangle.vertices[i].normal = {normal[0], normal[1], normal[2]};
            triangle.vertices[i].uv = {uv[0], uv[1]};
        }
        triangle.computeCentroids();
        triangle.computeGeometry();
        for (TriangleVertex& vertex : triangle.vertices) vertex.normal = triangle.normal;
        triangles.push_back(triangle);
    }
    digest = Digest::calculateHash(text);
}

}  // namespace quarn::test
