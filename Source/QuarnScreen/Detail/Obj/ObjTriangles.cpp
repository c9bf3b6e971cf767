#include "ObjTriangles.h"

#include <new>
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

// Returns the failure of the first bad reference of a face, the vertex of a corner before its
// normal.
std::optional<ObjOutcome> failureOf(const ObjFace& face, const ObjVertexData& data) {
    for (const ObjCorner& corner : face) {
        if (!isObjIndexInRange(corner.vertex, data.vertices.size()))
            return vertexFailure(L"Bad vertex references in the file.");
        if (!isObjIndexInRange(corner.normal, data.normalCount))
            return normalFailure(L"Bad Normal references in the file.");
    }
    return std::nullopt;
}

// The faces before the first bad reference, and the failure that follows them.
struct ValidFaces {
    std::span<const ObjFace> faces;
    std::optional<ObjOutcome> failure;
};

ValidFaces findValidFaces(const ObjData& objData) {
    const ObjVertexData& data = objData.vertexData;
    if (data.vertices.empty()) return {{}, vertexFailure(L"No vertices found in the file.")};
    if (data.normalCount == 0) return {{}, normalFailure(L"No normals found in the file.")};
    const std::span faces(objData.faces);
    for (std::size_t i = 0; i < faces.size(); ++i)
        if (auto failure = failureOf(faces[i], data)) return {faces.first(i), std::move(failure)};
    return {faces, std::nullopt};
}

// Fills triangles and records the state of their UVs.
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
        // Intended: the normals that the text specifies for the corners have no effect.
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

    // Intended: a corner without a texture coordinate keeps kNoUV. Only this reference may be bad.
    void setUV(Point<double, 2>& uv, const ObjCorner& corner) {
        if (!isObjIndexInRange(corner.textureCoordinate, data.textureCoordinates.size())) {
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

std::size_t reserveObjTriangles(const std::vector<ObjFace>& faces, std::size_t textSize,
                                std::vector<Triangle>& triangles) {
    constexpr std::size_t kMinBytes = std::size_t{1} << 24U;
    constexpr std::size_t kMaxTextRatio = 8;
    const std::size_t size = faces.size() * sizeof(Triangle);
    if (size < kMinBytes || size / kMaxTextRatio > textSize) return 0;
    if (faces.front()[0].vertex < 0 || faces.front()[0].normal < 0) return 0;
    try {
        triangles.reserve(triangles.size() + faces.size());
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return size;
}

ObjOutcome buildObjTriangles(const ObjData& objData, const Matrix<float, 4>& transform,
                             std::vector<Triangle>& triangles) {
    // Check the references first, so that no memory is reserved for triangles that are not built.
    const ValidFaces valid = findValidFaces(objData);
    triangles.reserve(triangles.size() + valid.faces.size());
    TriangleFiller filler(objData.vertexData, transform);
    for (const ObjFace& face : valid.faces) filler.fill(triangles.emplace_back(), face);
    return valid.failure.value_or(ObjOutcome{filler.status(), std::nullopt});
}

}  // namespace quarn::detail
