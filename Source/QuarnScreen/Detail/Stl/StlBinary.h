/// \file
/// Reader of binary STL files.
#pragma once

#include <cstddef>
#include <istream>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Reads a binary STL stream from its start and appends its triangles, with the file's normals and
/// without UV.
///
/// \note Intended: a triangle gets computed edges and normal only if the components of the file's
///       normal add up to less than 1e-6. A reader would expect edges for all triangles, and a
///       check of the normal's length.
///
/// \param in the stream
/// \param size number of bytes in the stream; limits the reserved capacity
/// \param[in,out] triangles receives the triangles, also those before a premature end
/// \return false if the stream ends before the number of triangles that it declares; a number below
///         1 is not an error
bool readStlBinary(std::istream& in, std::size_t size, std::vector<Triangle>& triangles);

}  // namespace quarn::detail
