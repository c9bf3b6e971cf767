#include "Corners.h"

#include "VertexIds.h"

namespace quarn {

namespace {

template <std::size_t N, class KeyOf>
CornerNumbers numbered(const std::vector<Triangle>& triangles, KeyOf keyOf) {
    // A vertex of a usual mesh has six triangles.
    PointIds<N> ids(triangles.size() / 2);
    CornerNumbers numbers;
    numbers.reserve(triangles.size());
    for (const Triangle& triangle : triangles) {
        const auto& [a, b, c] = triangle.vertices;
        numbers.push_back({ids.idOf(keyOf(a)), ids.idOf(keyOf(b)), ids.idOf(keyOf(c))});
    }
    return numbers;
}

}  // namespace

CornerNumbers numberCorners(const std::vector<Triangle>& triangles, CornerIdentity identity) {
    if (identity == CornerIdentity::Position)
        return numbered<3>(triangles, [](const TriangleVertex& corner) { return corner.position; });
    return numbered<5>(triangles, [](const TriangleVertex& corner) {
        const Point<double, 3>& at = corner.position;
        return Point<double, 5>(at[0], at[1], at[2], corner.uv[0], corner.uv[1]);
    });
}

}  // namespace quarn
