/// \file
/// The triangles of an OBJ text that has been scanned.
#pragma once

#include <optional>
#include <vector>

#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/ObjLoadException.h>
#include <QuarnScreen/Triangle.h>

#include "ObjData.h"

namespace quarn::detail {

/// What is wrong with a text, as the status of a screen numbers it.
enum class ObjStatus {
    Ok = 0,
    NoParameterization = 1,  ///< No texture coordinate, or a corner without one.
    BadNormals = 2,          ///< No normal, or a reference to none.
    BadVertices = 3,         ///< No vertex, or a reference to none.
    UvOutOfRange = 7         ///< Every corner has a UV, and one lies outside of [0, 1].
};

/// How the building ended.
struct ObjOutcome {
    ObjStatus status = ObjStatus::Ok;
    std::optional<ObjLoadException> failure;  ///< Set for bad normals and bad vertices alone.
};

/// Appends a triangle for each face, in their order, with all fields computed.
///
/// Positions go through the transform in floats, unless it is the identity. Intended: the three corner
/// normals are those of the face, whatever normals the text gives; these only have to exist and to be
/// referred to.
///
/// \param[in,out] triangles where the outcome is a failure, those of the faces before the first bad reference
///        have been appended
[[nodiscard]] ObjOutcome buildObjTriangles(const ObjData& objData, const Matrix<float, 4>& transform,
                                           std::vector<Triangle>& triangles);

}  // namespace quarn::detail
