/// \file
/// Distinguishes binary STL files from other binary files.
#pragma once

#include <string_view>

namespace quarn {

/// Returns true if the numbers of a binary file can be the corners of an STL file's triangles. In
/// other binary files, most numbers other than 0 are far larger or smaller than coordinates.
///
/// False if the bytes contain no whole triangle, or only zeros.
/// \param beginning the file, or its first bytes
[[nodiscard]] bool hasPlausibleCorners(std::string_view beginning);

}  // namespace quarn
