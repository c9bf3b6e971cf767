/// \file
/// Selects objects and groups of an OBJ text.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Formats/Obj/ObjSource.h>

namespace quarn {

/// Overwrites with blanks each face line that belongs to none of the objects and groups \p names,
/// so that all other lines keep their numbers. Does nothing if \p names is empty.
///
/// A name matches an object or group of listObjParts(), or all words of a line "g". Throws an Error
/// if one matches nothing, with the nearest names, and if no face is left.
void selectObjParts(ObjSource& source, const std::vector<std::string>& names);

}  // namespace quarn
