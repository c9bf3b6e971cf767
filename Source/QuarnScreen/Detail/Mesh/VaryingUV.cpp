#include "VaryingUV.h"

#include <algorithm>

namespace quarn::detail {

bool hasVaryingUV(const std::vector<Triangle>& triangles) {
    if (triangles.empty()) return false;
    const Point<double, 2>& reference = triangles.front().vertices[0].uv;
    return std::any_of(triangles.begin(), triangles.end(), [&reference](const Triangle& triangle) {
        return std::any_of(triangle.vertices.begin(), triangle.vertices.end(),
                           [&reference](const TriangleVertex& vertex) { return vertex.uv != reference; });
    });
}

}  // namespace quarn::detail
