/// \file
/// Reader of STL files.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Returns the bytes from the current position of the stream to its end. Reads from the stream's
/// buffer, so that the state of the stream is neither checked nor changed.
[[nodiscard]] std::string readRest(std::istream& in);

/// Reads an STL stream, binary or text, and appends its triangles. Errors are printed to the
/// standard error stream. Throws nothing.
///
/// \note Intended: text is read up to the first "endfacet", which is always an error, so that it
///       yields no triangle; a reader would expect the triangles of the text.
///
/// \param in the stream
/// \param size number of bytes in the stream; limits the reserved capacity, because a file's own
///        count is untrusted
/// \param[in,out] triangles receives the triangles, also those before an error
/// \return true if the stream was read without an error
bool readStl(std::istream& in, std::size_t size, std::vector<Triangle>& triangles);

}  // namespace quarn::detail
