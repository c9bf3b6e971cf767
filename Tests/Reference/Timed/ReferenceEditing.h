/// \file
/// Changes of a mesh with its indexes built again, for comparison of times.
#pragma once

#include <cmath>
#include <utility>
#include <vector>

#include "Reference/Mesh/ReferenceTransform.h"
#include "Reference/Timed/ReferenceIndexes.h"

namespace quarn::test {

/// Unlike ReferenceRefinement it counts no steps, and its pieces go into one list.
class ReferenceEditing {
public:
    explicit ReferenceEditing(std::vector<Triangle> mesh) : triangles(std::move(mesh)), indexes(triangles) {}

    void refine(double maxEdgeLength) {
        std::vector<Triangle> pieces;
        for (const Triangle& triangle : triangles) split(triangle, maxEdgeLength, pieces);
        triangles = std::move(pieces);
        indexes.build(triangles);
    }

    void applyTransform(const Point<double, 3>& translation, const Point<double, 3>& degrees, double scale) {
        triangles = referenceTransform(std::move(triangles), translation, degrees, scale);
        indexes.build(triangles);
    }

    /// How many pieces refine() makes of a mesh.
    static std::size_t countPieces(const std::vector<Triangle>& mesh, double maxEdgeLength) {
        std::vector<Triangle> pieces;
        std::size_t count = 0;
        for (const Triangle& triangle : mesh) {
            pieces.clear();
            split(triangle, maxEdgeLength, pieces);
            count += pieces.size();
        }
        return count;
    }

    std::vector<Triangle> triangles;
    ReferenceIndexes indexes;

private:
    using Vertex = TriangleVertex;

    static double angleAt(const Vertex& corner, const Vertex& first, const Vertex& second) {
        return std::acos(
            dot(normalized(first.position - corner.position), normalized(second.position - corner.position)));
    }

    static void splitPiece(const Vertex& a, const Vertex& b, const Vertex& c, double bound,
                           std::vector<Triangle>& pieces) {
        Triangle piece;
        piece.vertices = {a, b, c};
        piece.computeCentroids();
        split(piece, bound, pieces);
    }

    static void splitOne(const Vertex& a, const Vertex& b, const Vertex& c, double bound,
                         std::vector<Triangle>& pieces) {
        const Vertex m = Vertex::midpoint(a, b);
        splitPiece(a, m, c, bound, pieces);
        splitPiece(m, b, c, bound, pieces);
    }

    static void splitTwo(const Vertex& a, const Vertex& b, const Vertex& c, double bound,
                         std::vector<Triangle>& pieces) {
        const Vertex m = Vertex::midpoint(a, b);
        const Vertex n = Vertex::midpoint(b, c);
        const double unevenAtA = std::abs(angleAt(a, m, n) - angleAt(a, n, c));
        const double unevenAtC = std::abs(angleAt(c, n, m) - angleAt(c, m, a));
        const bool isFromC = unevenAtA > unevenAtC;
        if (isFromC) {
            splitPiece(a, m, c, bound, pieces);
            splitPiece(m, n, c, bound, pieces);
        } else {
            splitPiece(a, n, c, bound, pieces);
            splitPiece(a, m, n, bound, pieces);
        }
        splitPiece(m, b, n, bound, pieces);
    }

    static void splitAll(const Vertex& v0, const Vertex& v1, const Vertex& v2, double bound,
                         std::vector<Triangle>& pieces) {
        const Vertex m01 = Vertex::midpoint(v0, v1);
        const Vertex m12 = Vertex::midpoint(v1, v2);
        const Vertex m20 = Vertex::midpoint(v2, v0);
        splitPiece(v0, m01, m20, bound, pieces);
        splitPiece(m01, m12, m20, bound, pieces);
        splitPiece(m01, v1, m12, bound, pieces);
        splitPiece(m20, m12, v2, bound, pieces);
    }

    static void split(const Triangle& triangle, double bound, std::vector<Triangle>& pieces) {
        const auto& [v0, v1, v2] = triangle.vertices;
        const bool long01 = length(v1.position - v0.position) > bound;
        const bool long12 = length(v2.position - v1.position) > bound;
        const bool long20 = length(v0.position - v2.position) > bound;
        if (long01 && long12 && long20) return splitAll(v0, v1, v2, bound, pieces);
        if (long01 && long12) return splitTwo(v0, v1, v2, bound, pieces);
        if (long12 && long20) return splitTwo(v1, v2, v0, bound, pieces);
        if (long20 && long01) return splitTwo(v2, v0, v1, bound, pieces);
        if (long01) return splitOne(v0, v1, v2, bound, pieces);
        if (long12) return splitOne(v1, v2, v0, bound, pieces);
        if (long20) return splitOne(v2, v0, v1, bound, pieces);
        pieces.push_back(triangle);
    }
};

}  // namespace quarn::test
