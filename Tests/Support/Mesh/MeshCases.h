/// \file
/// Random meshes of every kind, and positions for queries.
#pragma once

#include "Support/GeometryBits.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Rng.h"

namespace quarn::test {

/// A small mesh of any shape: an even one of equal coordinates, a curved one, one with degenerate
/// triangles, folds, holes or seams, or independent triangles.
[[nodiscard]] Mesh anyShape(Rng& rng);

/// As anyShape(), often shuffled, with copies, in any scale, with UVs that overlap or none, or with
/// stored fields that do not fit. Corners are numbers.
[[nodiscard]] Mesh anyMesh(Rng& rng);

/// A position on one of the triangles, or near the limits of where it counts as on it: along its
/// edges, off its plane, rounded to floats; or any position at all.
[[nodiscard]] Point3 anyQuestion(const Mesh& mesh, Rng& rng);

/// A position at the limits of where one triangle holds it.
[[nodiscard]] Point3 questionAround(const Triangle& triangle, Rng& rng);

[[nodiscard]] const Triangle& anyOf(const Mesh& mesh, Rng& rng);

}  // namespace quarn::test
