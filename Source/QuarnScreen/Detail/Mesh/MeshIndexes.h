/// \file
/// The indexes of a mesh.
#pragma once

#include <QuarnScreen/Detail/Boundary/PointInPolygon.h>
#include <QuarnScreen/Detail/Search/CentroidSearch.h>
#include <QuarnScreen/Detail/Search/TriangleTrees.h>
#include <QuarnScreen/RegionMap.h>

#include "MeshBounds.h"

namespace quarn::detail {

/// Everything that is derived from a mesh's triangles, but for its boundaryUV and the ray tracer's scene.
struct MeshIndexes {
    CentroidSearch centroidSearch;  ///< By position.
    UVTree uvTree;                  ///< By UV centroid.
    RegionMap regionMap;            ///< By UV.
    PolygonBands boundaryUV;        ///< The boundaryUV in UV, for the question whether it holds a UV.
    MeshBounds bounds;              ///< All zero until the first build.
};

}  // namespace quarn::detail
