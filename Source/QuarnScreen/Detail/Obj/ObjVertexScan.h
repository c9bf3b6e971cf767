/// \file
/// The scan of an OBJ text for its vertices, texture coordinates and normals.
#pragma once

#include <string_view>

#include "ObjData.h"

namespace quarn::detail {

/// Appends the values of all lines that begin with "v" and a blank, or with "vt", and counts those that begin
/// with "vn".
///
/// A value that is missing is 0, and further ones are not looked at. Intended: a tab behind the "v" loses the
/// vertex.
///
/// \param text with a NUL behind its last byte
void scanVertexData(std::string_view text, ObjVertexData& data);

}  // namespace quarn::detail
