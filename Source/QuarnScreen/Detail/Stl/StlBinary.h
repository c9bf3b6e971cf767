/// \file
/// The binary form of STL files.
#pragma once

#include <cstddef>
#include <istream>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Reads a binary STL stream from its start and appends its triangles: positions, the file's normal, no UV.
///
/// Intended: only where the components of the normal add up to less than 1e-6 does a triangle get its own normal and
/// its edges; a reader would expect edges on all of them, and a test of the normal's length.
///
/// \param size bytes in the stream, for which room is made
/// \return false where the stream ends before the records that it announces; those before that stay. A count below 1 is
///         no error
bool readStlBinary(std::istream& in, std::size_t size, std::vector<Triangle>& triangles);

}  // namespace quarn::detail
