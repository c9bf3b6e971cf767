#include "Reference/Formats/ReferenceObjReader.h"

#include <cstddef>

namespace quarn::test {

namespace {

enum class LineClass { Vertex, TextureCoordinate, Normal, Face, Other };

LineClass classOf(const std::string& text, std::size_t i) {
    const char first = byteAt(text, i);
    if (first == 'f') return LineClass::Face;
    if (first != 'v') return LineClass::Other;
    switch (byteAt(text, i + 1)) {
        case ' ':
            return LineClass::Vertex;
        case 't':
            return LineClass::TextureCoordinate;
        case 'n':
            return LineClass::Normal;
        default:
            return LineClass::Other;
    }
}

bool endsLine(char c) {
    return c == '\n' || c == '\0';
}

std::size_t nextArgumentOf(const std::string& text, std::size_t i) {
    while (byteAt(text, i) != ' ' && !endsLine(byteAt(text, i))) ++i;
    return referenceSkipBlanks(text, i);
}

template <std::size_t N>
std::array<float, N> valuesAt(const std::string& text, std::size_t i) {
    std::array<float, N> values{};
    for (float& value : values) {
        value = referenceFloat(text, i);
        i = nextArgumentOf(text, i);
    }
    return values;
}

void readFace(const std::string& text, std::size_t i, ReferenceObjData& lists) {
    std::array<ReferenceObjCorner, 3> face;
    for (ReferenceObjCorner& corner : face) {
        corner = referenceObjCorner(text, i);
        i = nextArgumentOf(text, i);
    }
    lists.faces.push_back(face);
    while (byteAt(text, i) != '\n' && byteAt(text, i) != '\r') {
        // At a NUL no step goes on any more.
        if (byteAt(text, i) == '\0') {
            lists.isEndless = true;
            return;
        }
        lists.faces.push_back({face[0], lists.faces.back()[2], referenceObjCorner(text, i)});
        i = nextArgumentOf(text, i);
    }
}

Point<double, 3> transformed(const Matrix<float, 4>& m, const std::array<float, 3>& p) {
    bool isIdentity = true;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j) isIdentity = isIdentity && m(i, j) == (i == j ? 1.0F : 0.0F);
    if (isIdentity) return {p[0], p[1], p[2]};
    Point<double, 3> result;
    for (std::size_t i = 0; i < 3; ++i) {
        float sum = m(i, 3);
        for (std::size_t j = 0; j < 3; ++j) sum = sum + p[j] * m(i, j);
        result[i] = sum;
    }
    return result;
}

bool isOutside(float value) {
    return value < 0.0F || value > 1.0F;
}

}  // namespace

std::string referenceBlanked(std::string text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == '\\' && text[i + 1] == '\n') text[i] = text[i + 1] = ' ';
    return text;
}

ReferenceObjData referenceObjData(const std::string& text) {
    ReferenceObjData lists;
    std::size_t i = 0;
    while (i < text.size()) {
        i = referenceSkipBlanks(text, i);
        const LineClass lineClass = classOf(text, i);
        const std::size_t argument = nextArgumentOf(text, i);
        if (lineClass == LineClass::Vertex) lists.vertices.push_back(valuesAt<3>(text, argument));
        if (lineClass == LineClass::TextureCoordinate)
            lists.textureCoordinates.push_back(valuesAt<2>(text, argument));
        if (lineClass == LineClass::Normal) lists.normals.push_back(valuesAt<3>(text, argument));
        if (lineClass == LineClass::Face && !lists.isEndless) readFace(text, argument, lists);
        while (!endsLine(byteAt(text, i))) ++i;
        ++i;
    }
    return lists;
}

ReferenceObjResult referenceObjResult(const ReferenceObjData& lists, const Matrix<float, 4>& transform) {
    ReferenceObjResult load;
    if (lists.vertices.empty()) return {3, 2, L"No vertices found in the file.", {}};
    if (lists.normals.empty()) return {2, 1, L"No normals found in the file.", {}};
    if (lists.textureCoordinates.empty()) load.status = 1;

    int cornersWithoutUV = 0;
    const auto isBad = [](std::int32_t index, std::size_t count) {
        return index < 0 || static_cast<std::size_t>(index) >= count;
    };
    for (const auto& face : lists.faces) {
        Triangle triangle;
        for (std::size_t i = 0; i < 3; ++i) {
            const ReferenceObjCorner& corner = face[i];
            if (isBad(corner.vertex, lists.vertices.size()))
                return {3, 2, L"Bad vertex references in the file.", load.triangles};
            triangle.vertices[i].position =
                transformed(transform, lists.vertices[static_cast<std::size_t>(corner.vertex)]);
            if (isBad(corner.normal, lists.normals.size()))
                return {2, 1, L"Bad Normal references in the file.", load.triangles};
            if (isBad(corner.textureCoordinate, lists.textureCoordinates.size())) {
                ++cornersWithoutUV;
                continue;
            }
            const auto& uv = lists.textureCoordinates[static_cast<std::size_t>(corner.textureCoordinate)];
            triangle.vertices[i].uv = {uv[0], uv[1]};
            if (isOutside(uv[0]) || isOutside(uv[1])) load.status = 7;
        }
        triangle.computeCentroids();
        triangle.computeGeometry();
        for (TriangleVertex& vertex : triangle.vertices) vertex.normal = triangle.normal;
        load.triangles.push_back(triangle);
    }
    if (cornersWithoutUV > 0) load.status = 1;
    return load;
}

}  // namespace quarn::test
