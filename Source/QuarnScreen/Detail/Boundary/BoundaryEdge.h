/// \file
/// Corners and edges of triangles, as the boundary search compares them.
#pragma once

#include <cstddef>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Returns true if position and UV of two corners are equal exactly. NaN is equal to nothing.
inline bool isSameCorner(const TriangleVertex& a, const TriangleVertex& b) {
    return a.position == b.position && a.uv == b.uv;
}

/// Compares lexicographically by position, then by UV. At a coordinate with NaN the result is
/// false.
inline bool isLesserCorner(const TriangleVertex& a, const TriangleVertex& b) {
    return a.position != b.position ? a.position < b.position : a.uv < b.uv;
}

/// An edge of a triangle with its two ends in order. It points to the triangle's own corners.
struct BoundaryEdge {
    const TriangleVertex* lower;
    const TriangleVertex* upper;
    const Triangle* triangle;
};

/// Returns the edge from a corner, 0 to 2, to the next one.
inline BoundaryEdge boundaryEdge(const Triangle& triangle, std::size_t corner) {
    const TriangleVertex& a = triangle.vertices[corner];
    const TriangleVertex& b = triangle.vertices[(corner + 1) % 3];
    if (isLesserCorner(b, a)) return {&b, &a, &triangle};
    return {&a, &b, &triangle};
}

/// A step of a walk along an edge: the end that it reaches.
struct BoundaryStep {
    const TriangleVertex* end;
    const Triangle* triangle;
};

/// The end from which a walk takes edges: the lower end for Up, the upper end for Down.
enum class WalkDirection { Up, Down };

}  // namespace quarn::detail
