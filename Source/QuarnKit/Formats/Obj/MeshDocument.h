/// \file
/// A mesh as an OBJ text describes it, for the tool to write.
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
    std::vector<detail::ObjFace>
        faces;  ///< A corner with a normal of -1 gets that of its triangle when it is written.
};

/// The text of a mesh, from which the library reads the same floats in the same order.
/// \param comment a line in front, without its "#"
[[nodiscard]] std::string objTextOf(const MeshDocument& mesh, const std::string& comment);

/// The mesh of triangles that share nothing: equal positions become one vertex, as do UVs and normals. kNoUV is left out.
[[nodiscard]] MeshDocument meshDocumentOf(std::span<const Triangle> triangles);

/// The mesh of an OBJ text that the library loads, in the frame of its screen. Polygons become triangles.
[[nodiscard]] MeshDocument meshDocumentOf(const std::string& objText, const Matrix<float, 4>& transform);

}  // namespace quarn
