/// \file
/// The indexes of a mesh.
#pragma once

#include <QuarnScreen/Detail/Boundary/PointInPolygon.h>
#include <QuarnScreen/Detail/Search/ContainingTriangleSearch.h>
#include <QuarnScreen/Detail/Search/TriangleTrees.h>
#include <QuarnScreen/RegionMap.h>

#include "MeshBounds.h"

namespace quarn::detail {

/// The search structures of a mesh, except the ray tracer's scene.
struct MeshIndexes {
    ContainingTriangleSearch containingTriangle;  ///< Finds triangles by position.
    UVTree uvTree;                                ///< Finds triangles by UV centroid.
    RegionMap regionMap;                          ///< Finds triangles by UV.
    PolygonBands boundaryUV;                      ///< The boundary in UV, for containment queries.
    MeshBounds bounds;                            ///< All zero until the first build.
};

}  // namespace quarn::detail
