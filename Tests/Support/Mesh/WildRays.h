/// \file
/// Meshes and rays for which rounding, ties and layers decide about hits.
#pragma once

#include <vector>

#include <QuarnScreen/Ray.h>

#include "Support/GeometryBits.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Rng.h"

namespace quarn::test {

/// A mesh and rays that aim at it.
struct RayCase {
    Mesh mesh;
    std::vector<Ray> rays;
};

/// Returns a random case: a smooth surface, sheets that nearly coincide, or loose triangles with
/// small whole coordinates, any of them twice, at any distance from the origin. Rays aim at
/// positions, vertices and edges, and run within the planes of triangles; their directions have any
/// length.
[[nodiscard]] RayCase wildRayCase(Rng& rng, int rayCount);

}  // namespace quarn::test
