/// \file
/// Removes what the faces of an OBJ text do not need.
#pragma once

#include <QuarnKit/Formats/Obj/ObjSource.h>

namespace quarn {

/// Removes the vertices, UVs and normals to which no face refers, comments, and lines that have no
/// effect, except the material libraries and the names and materials of the faces. The rest keeps
/// its order and its digits; the references of faces become the new numbers.
/// \pre repairObj() returned the text
void removeUnusedObjData(ObjSource& source);

}  // namespace quarn
