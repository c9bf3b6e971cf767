/// \file
/// The scan of a whole OBJ text on two threads.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include <QuarnScreen/Triangle.h>

#include "ObjData.h"

namespace quarn::detail {

/// Scans a text for faces on one thread and for vertex data on another.
///
/// \param text with a NUL behind its last byte; it stays unchanged meanwhile
/// \param[in,out] triangles list for the triangles of the faces; it may get room for them, and no more
/// \param meanwhile called on the calling thread while the two scan
/// \throws std::bad_alloc from a scan, or what \p meanwhile throws; where several fail, \p meanwhile goes
///         first, then the scan for faces
/// \throws std::system_error where a thread does not start
/// In any case both threads have ended.
[[nodiscard]] ObjData parseObj(std::string_view text, std::vector<Triangle>& triangles,
                               const std::function<void()>& meanwhile);

}  // namespace quarn::detail
