#include "MeshDocument.h"

#include <algorithm>

#include <QuarnKit/Base/UniqueRecords.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/IScreenGeometry.h>

#include "ObjNumberText.h"

namespace quarn {

namespace {

template <std::size_t N, class Indices>
std::array<float, N> toFloats(const Point<double, N, Indices>& point) {
    std::array<float, N> record{};
    for (std::size_t i = 0; i < N; ++i) record.at(i) = static_cast<float>(point[i]);
    return record;
}

Point<double, 3> toDoubles(const std::array<float, 3>& record) {
    return {record[0], record[1], record[2]};
}

// An OBJ text counts from 1.
void appendIndex(std::string& text, std::int32_t index) {
    appendObjInteger(text, static_cast<std::uint64_t>(std::int64_t{index} + 1));
}

void addFace(std::string& text, const detail::ObjFace& face) {
    text += 'f';
    for (const detail::ObjCorner& corner : face) {
        appendIndex(text += ' ', corner.vertex);
        text += '/';
        if (corner.textureCoordinate >= 0) appendIndex(text, corner.textureCoordinate);
        appendIndex(text += '/', corner.normal);
    }
    text += '\n';
}

// Returns an upper bound for the lines of a mesh. Bytes that are reserved in vain take no memory.
std::size_t maxTextBytes(const MeshDocument& mesh) {
    constexpr std::size_t kNumberBytes = 16;  // of a float and the blank before it
    constexpr std::size_t kKeywordBytes = 3;
    const std::size_t numbers = 3 * mesh.positions.size() + 2 * mesh.uvs.size() + 3 * mesh.normals.size();
    const std::size_t lines =
        mesh.positions.size() + mesh.uvs.size() + mesh.normals.size() + mesh.faces.size();
    const std::size_t largestIndex = std::max({mesh.positions.size(), mesh.uvs.size(), mesh.normals.size()});
    const std::size_t cornerBytes = 3 * (std::to_string(largestIndex).size() + 1);
    return numbers * kNumberBytes + lines * kKeywordBytes + 3 * mesh.faces.size() * cornerBytes;
}

// A triangle with zero area has no normal of its own, and any is valid.
std::array<float, 3> normalOf(const MeshDocument& mesh, const detail::ObjFace& face) {
    const auto corner = [&](std::size_t i) {
        return toDoubles(mesh.positions.at(static_cast<std::size_t>(face.at(i).vertex)));
    };
    const Point<double, 3> normal = cross(corner(1) - corner(0), corner(2) - corner(0));
    const double size = length(normal);
    return size > 0.0 ? toFloats(normal / size) : std::array<float, 3>{0.0F, 0.0F, 1.0F};
}

}  // namespace

std::string objTextOf(MeshDocument mesh, const std::string& comment) {
    UniqueRecords<3> uniqueNormals(mesh.normals);
    for (detail::ObjFace& face : mesh.faces) {
        if (std::none_of(face.begin(), face.end(),
                         [](const detail::ObjCorner& corner) { return corner.normal < 0; }))
            continue;
        const std::int32_t normal = uniqueNormals.indexOf(normalOf(mesh, face));
        for (detail::ObjCorner& corner : face)
            if (corner.normal < 0) corner.normal = normal;
    }
    std::string text = "# " + comment + "\n";
    text.reserve(text.size() + maxTextBytes(mesh));
    appendObjLines(text, "v", mesh.positions);
    appendObjLines(text, "vt", mesh.uvs);
    appendObjLines(text, "vn", mesh.normals);
    for (const detail::ObjFace& face : mesh.faces) addFace(text, face);
    return text;
}

MeshDocument meshDocumentOf(std::span<const Triangle> triangles) {
    MeshDocument mesh;
    UniqueRecords<3> positions(mesh.positions);
    UniqueRecords<2> uvs(mesh.uvs);
    mesh.faces.reserve(triangles.size());
    for (const Triangle& triangle : triangles) {
        detail::ObjFace& face = mesh.faces.emplace_back();
        for (std::size_t i = 0; i < face.size(); ++i) {
            const TriangleVertex& vertex = triangle.vertices.at(i);
            face.at(i).vertex = positions.indexOf(toFloats(vertex.position));
            if (vertex.uv != kNoUV) face.at(i).textureCoordinate = uvs.indexOf(toFloats(vertex.uv));
        }
    }
    return mesh;
}

MeshDocument meshDocumentOf(const std::string& objText, const Matrix<float, 4>& transform) {
    detail::ObjData objData = detail::parseObj(objText);
    MeshDocument mesh;
    mesh.positions = std::move(objData.vertexData.vertices);
    mesh.uvs = std::move(objData.vertexData.textureCoordinates);
    mesh.faces = std::move(objData.faces);
    if (transform != Matrix<float, 4>::identity())
        for (auto& [x, y, z] : mesh.positions) {
            const Point<float, 3> position = transform.transformPoint(x, y, z);
            x = position[0];
            y = position[1];
            z = position[2];
        }
    for (detail::ObjFace& face : mesh.faces)
        for (detail::ObjCorner& corner : face) {
            corner.normal = -1;
            if (!detail::isObjIndexInRange(corner.textureCoordinate, mesh.uvs.size()))
                corner.textureCoordinate = -1;
        }
    return mesh;
}

}  // namespace quarn
