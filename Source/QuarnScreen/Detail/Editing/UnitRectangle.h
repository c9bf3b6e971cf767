/// \file
/// Fitting of meshes into a unit rectangle.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Translates and scales the corners so that x and y start at -0.5, z starts at 0, and the larger
/// extent of x and y is 1. Then appends the two triangles, without UV, of a rectangle behind the
/// mesh that extends beyond it by 0.2 on each side. Prints "..." and a line feed to the standard
/// output.
///
/// \note Intended: a maximum starts from the smallest positive number, so that a negative maximum
///       counts as zero. Only positions change, and the derived fields of the triangles do not. A
///       reader would expect neither.
void scaleToUnitRectangle(std::vector<Triangle>& triangles);

}  // namespace quarn::detail
