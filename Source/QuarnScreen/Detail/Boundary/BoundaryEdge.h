/// \file
/// Corners and edges of triangles as the outline of a mesh sees them.
#pragma once

#include <cstddef>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Whether position and UV of two corners agree exactly; a NaN agrees with nothing.
inline bool isSameCorner(const TriangleVertex& a, const TriangleVertex& b) {
    return a.position == b.position && a.uv == b.uv;
}

/// Lexicographic order by position, then UV. A NaN ends the comparison with "not less".
inline bool isLesserCorner(const TriangleVertex& a, const TriangleVertex& b) {
    return a.position != b.position ? a.position < b.position : a.uv < b.uv;
}

/// An edge of a triangle, its ends in order. It refers to the triangle's own corners.
struct BoundaryEdge {
    const TriangleVertex* lower;
    const TriangleVertex* upper;
    const Triangle* triangle;
};

/// The edge from a corner, 0 to 2, to the next one.
inline BoundaryEdge boundaryEdge(const Triangle& triangle, std::size_t corner) {
    const TriangleVertex& a = triangle.vertices[corner];
    const TriangleVertex& b = triangle.vertices[(corner + 1) % 3];
    if (isLesserCorner(b, a)) return {&b, &a, &triangle};
    return {&a, &b, &triangle};
}

/// A step of a walk along an edge: where it leads.
struct BoundaryStep {
    const TriangleVertex* end;
    const Triangle* triangle;
};

/// Whether a walk takes edges from their lower or from their upper end.
enum class WalkDirection { Up, Down };

}  // namespace quarn::detail
