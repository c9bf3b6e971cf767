#include "TriangleEdit.h"

#include <QuarnScreen/Detail/Editing/RigidTransform.h>

namespace quarn {

void transformPositions(std::vector<Triangle>& triangles, const PositionTransform& transform) {
    const detail::RigidTransform rigid(transform.translation, transform.rotation, transform.scale);
    for (Triangle& triangle : triangles)
        for (TriangleVertex& corner : triangle.vertices) corner.position = rigid.apply(corner.position);
}

void flipUVs(std::vector<Triangle>& triangles, UvAxis axis) {
    const auto i = static_cast<std::size_t>(axis);
    for (Triangle& triangle : triangles)
        for (TriangleVertex& corner : triangle.vertices) corner.uv[i] = 1.0 - corner.uv[i];
}

}  // namespace quarn
