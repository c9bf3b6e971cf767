/// \file
/// Meshes as an OBJ text describes them.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include <QuarnScreen/Detail/Obj/ObjData.h>
#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/Triangle.h>

namespace quarn {

/// Vertices, UVs and normals in their order, and the triangles that refer to them.
struct MeshDocument {
    std::vector<std::array<float, 3>> positions;
    std::vector<std::array<float, 2>> uvs;
    std::vector<std::array<float, 3>> normals;
    /// A corner with a normal of -1 gets that of its triangle in the text.
    std::vector<detail::ObjFace> faces;
};

/// Returns the text of a mesh, from which the library reads the same floats in the same order.
/// \param comment the first line, without its "#"
[[nodiscard]] std::string objTextOf(MeshDocument mesh, const std::string& comment);

/// Returns the mesh of triangles that share nothing: equal positions become one vertex, and equal
/// UVs one UV. Corners with kNoUV have no UV.
[[nodiscard]] MeshDocument meshDocumentOf(std::span<const Triangle> triangles);

/// Returns the mesh of an OBJ text that the library loads, in the frame of its screen. Polygons
/// become triangles.
[[nodiscard]] MeshDocument meshDocumentOf(const std::string& objText, const Matrix<float, 4>& transform);

}  // namespace quarn
