/// \file
/// Builds the triangles of a parsed OBJ text.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/ObjLoadException.h>
#include <QuarnScreen/Triangle.h>

#include "ObjData.h"

namespace quarn::detail {

/// Result of a build, by the numbers of OBJScreen::Status.
enum class ObjStatus {
    Ok = 0,
    NoParameterization = 1,  ///< No texture coordinate, or none at a corner.
    BadNormals = 2,          ///< No normal, or an invalid reference.
    BadVertices = 3,         ///< No vertex, or an invalid reference.
    UvOutOfRange = 7         ///< Every corner has a UV, and one is outside of [0, 1].
};

/// Result of a build, with its exception.
struct ObjOutcome {
    ObjStatus status = ObjStatus::Ok;
    std::optional<ObjLoadException> failure;  ///< Set for bad normals and bad vertices only.
};

/// Reserves memory for the triangles of a large mesh. Does nothing for faces that would need much
/// more memory than their text, which is probably no mesh, if the first face is invalid, and if the
/// memory is not available: then buildObjTriangles() fails if it needs it.
/// \param textSize bytes of the text of the faces
/// \return bytes of the new triangles; 0 if nothing is reserved
std::size_t reserveObjTriangles(const std::vector<ObjFace>& faces, std::size_t textSize,
                                std::vector<Triangle>& triangles);

/// Appends a triangle for each face, in their order, with all fields computed.
///
/// Positions go through the transform in floats, unless it is the identity. Intended: the three
/// corner normals are those of the face. The normals of the text only have to exist and to be
/// referred to.
///
/// \param[in,out] triangles if the outcome is a failure, the faces before the first bad reference
///         have been appended
[[nodiscard]] ObjOutcome buildObjTriangles(const ObjData& objData, const Matrix<float, 4>& transform,
                                           std::vector<Triangle>& triangles);

}  // namespace quarn::detail
