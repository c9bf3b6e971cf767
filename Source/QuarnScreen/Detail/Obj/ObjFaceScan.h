/// \file
/// The scan of an OBJ text for its faces.
#pragma once

#include <string_view>
#include <vector>

#include "ObjData.h"

namespace quarn::detail {

/// Scans one corner, for instance "1/2/3" or "1//3"; fails on nothing.
///
/// Runs of digits wrap at 32 bits; none counts as 0, so a relative index gives -1.
///
/// \param text where blanks or the corner begin; a NUL must end it
/// \param[out] corner all three indices are written
/// \return a place up to which the corner has no blank, line feed or NUL
const char* scanCorner(const char* text, ObjCorner& corner);

/// Appends the triangles of all lines that begin with an "f", each polygon as a fan around its first corner.
///
/// Intended: any word that begins with the letter will do, and a comment behind the corners counts as one
/// more corner.
///
/// \param text with a NUL behind its last byte
/// \throws std::bad_alloc also for a face line that a NUL ends instead of a line feed: such a fan never ends
void scanFaces(std::string_view text, std::vector<ObjFace>& faces);

}  // namespace quarn::detail
