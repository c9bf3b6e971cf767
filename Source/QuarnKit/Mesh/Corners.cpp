#include "Corners.h"

#include "VertexIds.h"

namespace quarn {

namespace {

template <std::size_t N, class KeyOf>
CornerIds collectIds(const std::vector<Triangle>& triangles, KeyOf keyOf) {
    // A vertex of a usual mesh has six triangles.
    VertexIds<N> ids(triangles.size() / 2);
    CornerIds cornerIds;
    cornerIds.reserve(triangles.size());
    for (const Triangle& triangle : triangles) {
        const auto& [a, b, c] = triangle.vertices;
        cornerIds.push_back({ids.idOf(keyOf(a)), ids.idOf(keyOf(b)), ids.idOf(keyOf(c))});
    }
    return cornerIds;
}

}  // namespace

CornerIds buildCornerIds(const std::vector<Triangle>& triangles, CornerIdentity identity) {
    if (identity == CornerIdentity::Position)
        return collectIds<3>(triangles, [](const TriangleVertex& corner) { return corner.position; });
    return collectIds<5>(triangles, [](const TriangleVertex& corner) {
        const Point<double, 3>& at = corner.position;
        return Point<double, 5>(at[0], at[1], at[2], corner.uv[0], corner.uv[1]);
    });
}

}  // namespace quarn
