#include "ObjTriangles.h"

#include <cstddef>
#include <span>
#include <string>

namespace quarn::detail {

namespace {

// Kinds of a load error.
constexpr int kNormalError = 1;
constexpr int kVertexError = 2;

ObjOutcome vertexFailure(const std::wstring& message) {
    return {ObjStatus::BadVertices, ObjLoadException(kVertexError, message)};
}

ObjOutcome normalFailure(const std::wstring& message) {
    return {ObjStatus::BadNormals, ObjLoadException(kNormalError, message)};
}

// Whether an index from zero refers to one of a list; a negative one becomes larger than any count.
bool isWithin(std::int32_t index, std::size_t count) {
    return static_cast<std::size_t>(index) < count;
}

// The first bad reference of a face, the vertex of a corner before its normal.
std::optional<ObjOutcome> failureOf(const ObjFace& face, const ObjVertexData& data) {
    for (const ObjCorner& corner : face) {
        if (!isWithin(corner.vertex, data.vertices.size()))
            return vertexFailure(L"Bad vertex references in the file.");
        if (!isWithin(corner.normal, data.normalCount))
            return normalFailure(L"Bad Normal references in the file.");
    }
    return std::nullopt;
}

// The faces that become triangles, and what is wrong with the text behind them.
struct SoundFaces {
    std::span<const ObjFace> faces;
    std::optional<ObjOutcome> failure;
};

SoundFaces soundFacesOf(const ObjData& objData) {
    const ObjVertexData& data = objData.vertexData;
    if (data.vertices.empty()) return {{}, vertexFailure(L"No vertices found in the file.")};
    if (data.normalCount == 0) return {{}, normalFailure(L"No normals found in the file.")};
    const std::span faces(objData.faces);
    for (std::size_t i = 0; i < faces.size(); ++i)
        if (auto failure = failureOf(faces[i], data)) return {faces.first(i), std::move(failure)};
    return {faces, std::nullopt};
}

// Fills triangles and notes what it sees of their UVs.
class TriangleFiller {
public:
    TriangleFiller(const ObjVertexData& vertexData, const Matrix<float, 4>& positionTransform)
        : data(vertexData),
          transform(positionTransform),
          isTransformed(positionTransform != Matrix<float, 4>::identity()) {}

    // Fills a default triangle from a face whose vertices exist.
    void fill(Triangle& triangle, const ObjFace& face) {
        for (std::size_t i = 0; i < face.size(); ++i) {
            triangle.vertices[i].position = transformedPosition(face[i]);
            setUV(triangle.vertices[i].uv, face[i]);
        }
        triangle.computeCentroids();
        triangle.computeGeometry();
        // Intended: the normals that the text gives for the corners have no effect.
        for (TriangleVertex& vertex : triangle.vertices) vertex.normal = triangle.normal;
    }

    [[nodiscard]] ObjStatus status() const {
        if (isUVMissing || data.textureCoordinates.empty()) return ObjStatus::NoParameterization;
        return isUVOutside ? ObjStatus::UvOutOfRange : ObjStatus::Ok;
    }

private:
    [[nodiscard]] Point<double, 3> transformedPosition(const ObjCorner& corner) const {
        const auto& [x, y, z] = data.vertices[static_cast<std::size_t>(corner.vertex)];
        if (!isTransformed) return {x, y, z};
        const Point<float, 3> position = transform.transformPoint(x, y, z);
        return {position[0], position[1], position[2]};
    }

    // Intended: a corner without a texture coordinate keeps kNoUV; this is the one reference that may be bad.
    void setUV(Point<double, 2>& uv, const ObjCorner& corner) {
        if (!isWithin(corner.textureCoordinate, data.textureCoordinates.size())) {
            isUVMissing = true;
            return;
        }
        const auto& [u, v] = data.textureCoordinates[static_cast<std::size_t>(corner.textureCoordinate)];
        if (u < 0.0F || u > 1.0F || v < 0.0F || v > 1.0F) isUVOutside = true;
        uv = {u, v};
    }

    const ObjVertexData& data;
    const Matrix<float, 4>& transform;
    bool isTransformed;
    bool isUVMissing = false;
    bool isUVOutside = false;
};

}  // namespace

ObjOutcome buildObjTriangles(const ObjData& objData, const Matrix<float, 4>& transform,
                             std::vector<Triangle>& triangles) {
    // The references come first, so that no room is taken for triangles that do not come.
    const SoundFaces sound = soundFacesOf(objData);
    triangles.reserve(triangles.size() + sound.faces.size());
    TriangleFiller filler(objData.vertexData, transform);
    for (const ObjFace& face : sound.faces) filler.fill(triangles.emplace_back(), face);
    return sound.failure.value_or(ObjOutcome{filler.status(), std::nullopt});
}

}  // namespace quarn::detail
