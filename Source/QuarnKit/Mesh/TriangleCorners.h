/// \file
/// The corners of triangles in space and in UV.
#pragma once

#include <array>
#include <vector>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnScreen/Triangle.h>

namespace quarn {

using TriangleCorners = std::array<Point<double, 3>, 3>;
using TriangleUVs = std::array<Point<double, 2>, 3>;

[[nodiscard]] inline TriangleCorners cornersOf(const Triangle& triangle) {
    const auto& [a, b, c] = triangle.vertices;
    return {a.position, b.position, c.position};
}

/// Returns the bounds of the corners of all triangles.
[[nodiscard]] inline Bounds<3> boundsOf(const std::vector<Triangle>& triangles) {
    Bounds<3> bounds;
    for (const Triangle& triangle : triangles)
        for (const TriangleVertex& corner : triangle.vertices) bounds.include(corner.position);
    return bounds;
}

[[nodiscard]] inline TriangleUVs uvsOf(const Triangle& triangle) {
    const auto& [a, b, c] = triangle.vertices;
    return {a.uv, b.uv, c.uv};
}

/// Returns twice the signed area in UV. It is negative for corners that are counterclockwise on a
/// picture whose v points downwards.
[[nodiscard]] inline double signedUvArea(const TriangleUVs& uvs) {
    const Point<double, 2> a = uvs[1] - uvs[0];
    const Point<double, 2> b = uvs[2] - uvs[0];
    return a[0] * b[1] - a[1] * b[0];
}

}  // namespace quarn
