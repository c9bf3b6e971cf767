/// \file
/// Meshes and boundaries for the tests of the grid, of changes and of views.
#pragma once

#include <vector>

#include "Support/GeometryBits.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Rng.h"

namespace quarn::test {

/// Scales the UV of a mesh and moves it: a full unit square then fills the square from \p low to \p
/// high.
void squeezeUV(Mesh& mesh, double low, double high);

/// Turns, scales and moves the UV of a mesh by any amount, so that its boundary crosses the grid's
/// lines anywhere.
void warpUV(Mesh& mesh, Rng& rng);

/// A flat grid without the middle third of the columns in its upper half: the shape of a U. \pre
/// columns divide by 3
[[nodiscard]] Mesh notchedGrid(const GridSize& size);

/// A rectangle in UV, closed.
[[nodiscard]] std::vector<Point2> rectangleUV(const Point2& low, const Point2& high);

/// A closed boundary in UV of any form: a star around a point, often with corners on a lattice, or
/// one that crosses itself.
[[nodiscard]] std::vector<Point2> anyOutline(Rng& rng);

/// Sets the corner normals of a mesh to any unit vectors, of which some cancel each other out.
void scatterNormals(Mesh& mesh, Rng& rng);

}  // namespace quarn::test
