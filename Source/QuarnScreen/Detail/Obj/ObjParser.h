/// \file
/// The parser of OBJ texts.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>
#include <vector>

#include "ObjData.h"

namespace quarn::detail {

/// No limit of the number of faces.
inline constexpr std::size_t kAnyFaceCount = std::numeric_limits<std::size_t>::max();

/// Scans one corner, for instance "1/2/3" or "1//3". Never fails.
///
/// Runs of digits wrap at 32 bits. No digit counts as 0, so a relative index gives -1.
///
/// \param text start of the corner, or of blanks before it; a NUL ends the text
/// \param[out] corner all three indices are written
/// \return a place up to which the corner has no blank, line feed or NUL
const char* scanCorner(const char* text, ObjCorner& corner);

/// Appends the triangles of all lines that begin with an "f", each polygon as a fan around its
/// first corner.
///
/// Intended: any word that begins with the letter is accepted, and a comment after the corners
/// counts as one more corner.
///
/// \param text followed by a NUL
/// \throws std::bad_alloc also for a face line that a NUL ends instead of a line feed, since such a
///         fan never ends, and for more than \p maxCount faces
void scanFaces(std::string_view text, std::vector<ObjFace>& faces, std::size_t maxCount = kAnyFaceCount);

/// Appends the values of all lines that begin with "v" and a blank, or with "vt", and counts those
/// that begin with "vn".
///
/// A missing value is 0, and further values are ignored. Intended: a tab after the "v" loses the
/// vertex.
///
/// \param text followed by a NUL
void scanVertexData(std::string_view text, ObjVertexData& data);

/// Limits of a parse, and work that it does concurrently. An empty function is not called.
struct ObjParseTasks {
    std::size_t maxFaceCount = kAnyFaceCount;
    /// Called on the calling thread during the scans.
    std::function<void()> meanwhile = {};
    /// Called after the scan for faces, on its thread.
    std::function<void(const std::vector<ObjFace>&)> afterFaces = {};
    /// Called after the scan for vertex data, on its thread.
    std::function<void()> afterVertexData = {};
};

/// Parses a text: scans it for faces on one thread and for vertex data on another. Both threads
/// have ended in any case.
///
/// \param text followed by a NUL; must not change during the call
/// \throws std::bad_alloc as scanFaces(), and any exception of \p tasks. If several fail, that of
///         `meanwhile` is thrown, or else that of the thread that scans for faces
/// \throws std::system_error if a thread does not start
[[nodiscard]] ObjData parseObj(std::string_view text, const ObjParseTasks& tasks = {});

}  // namespace quarn::detail
