/// \file
/// Triangles from STL files.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// The bytes from where the stream stands to its end. They are taken from the stream's buffer whatever the state of the
/// stream is, and leave that as it was.
[[nodiscard]] std::string readRest(std::istream& in);

/// Reads an STL stream, binary or text, and appends its triangles. What is wrong is printed on the standard error
/// stream; nothing is thrown.
///
/// Intended: text is read up to the first "endfacet", which is always an error, so that it gives no triangle.
///
/// \param size bytes in the stream, for which room is made; a file's own count is not trusted with that
/// \return whether the stream was read without an error. The triangles read before one stay
bool readStl(std::istream& in, std::size_t size, std::vector<Triangle>& triangles);

}  // namespace quarn::detail
