/// \file
/// Meshes fitted into a unit rectangle.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Moves and scales the corners so that the larger of the extents in x and y becomes 1, centred on the origin if it is
/// both, with z from 0; appends two triangles, without UV, of a rectangle behind that stands out by 0.2 on each side;
/// prints "..." and a line feed on the standard output.
///
/// Intended: a maximum starts from the least positive number, so one below zero counts as zero; and only positions
/// change, not what triangles derive from them. A reader would expect neither.
void scaleToUnitRectangle(std::vector<Triangle>& triangles);

}  // namespace quarn::detail
