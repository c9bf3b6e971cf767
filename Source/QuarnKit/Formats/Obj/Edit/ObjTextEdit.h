/// \file
/// Edits of the numbers of an OBJ text that leave its other words unchanged.
#pragma once

#include <string>

#include <QuarnKit/Formats/Obj/ObjSource.h>
#include <QuarnScreen/Point.h>

namespace quarn {

/// Moves the origin of a text and flips its v, as the options demand. The numbers are computed from
/// their decimal text in double precision, and rounded to floats after that. The text may be one of
/// any program: words that are no numbers stay, and so do the numbers of all lines. A comment at
/// the end states how far the origin was moved.
///
/// Throws an Error if the origin is to be found in the mesh and repairObj() refuses the text.
void editObjText(ObjSource& source, const ObjOptions& options);

/// Returns a position near the middle of the vertices of all faces. Its coordinates are multiples
/// of the largest power of ten that is not above the size of the mesh, so that they have few
/// digits.
/// \param objText a text that the library loads
[[nodiscard]] Point<double, 3> findObjOrigin(const std::string& objText);

/// Returns an origin of a text in the frame of its screen.
[[nodiscard]] Point<double, 3> originInScreen(const Point<double, 3>& origin, const ObjFrame& frame);

/// Returns coordinates as in "512340, 5403210, 310".
[[nodiscard]] std::string coordinatesText(const Point<double, 3>& position);

/// Returns the comment, without its "#", that states how far the origin was moved.
[[nodiscard]] std::string originComment(const Point<double, 3>& origin);

}  // namespace quarn
