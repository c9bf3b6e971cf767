/// \file
/// Changes of a mesh written plainly, with plain indexes made anew.
#pragma once

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "Reference/Timed/ReferenceIndexes.h"

namespace quarn::bench {

class PlainEditing {
public:
    explicit PlainEditing(std::vector<Triangle> mesh) : triangles(std::move(mesh)), indexes(triangles) {}

    void refine(double maxEdgeLength) {
        std::vector<Triangle> pieces;
        for (const Triangle& triangle : triangles) split(triangle, maxEdgeLength, pieces);
        triangles = std::move(pieces);
        indexes.build(triangles);
    }

    void applyTransform(const Point<double, 3>& translation, const Point<double, 3>& degrees, double scale) {
        constexpr double kRadians = 0.017453292;
        const Matrix rotation = product(product(rotationAbout({0.0, 0.0, 1.0}, degrees[0] * -kRadians),
                                                rotationAbout({1.0, 0.0, 0.0}, degrees[1] * kRadians)),
                                        rotationAbout({0.0, 1.0, 0.0}, degrees[2] * kRadians));
        for (Triangle& triangle : triangles) {
            for (TriangleVertex& vertex : triangle.vertices) {
                const Point<double, 3> scaled = vertex.position * scale;
                vertex.position = Point<double, 3>(dot(rotation[0], scaled), dot(rotation[1], scaled),
                                                   dot(rotation[2], scaled)) +
                                  translation;
            }
        }
        for (Triangle& triangle : triangles) {
            triangle.computeGeometry();
            for (TriangleVertex& vertex : triangle.vertices) vertex.normal = triangle.normal;
        }
        indexes.build(triangles);
    }

    /// How many pieces refine() makes of a mesh.
    static std::size_t detail::countPieces(const std::vector<Triangle>& mesh, double maxEdgeLength) {
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
    PlainIndexes indexes;

private:
    using Vertex = TriangleVertex;
    using Matrix = std::array<Point<double, 3>, 3>;

    static Matrix rotationAbout(const Point<double, 3>& axis, double angle) {
        const auto [x, y, z] = std::array{axis[0], axis[1], axis[2]};
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        const double k = 1.0 - c;
        return {Point<double, 3>(x * x * k + c, x * y * k - s * z, x * z * k + s * y),
                Point<double, 3>(x * y * k + s * z, y * y * k + c, y * z * k - s * x),
                Point<double, 3>(x * z * k - s * y, y * z * k + s * x, z * z * k + c)};
    }

    static Matrix product(const Matrix& a, const Matrix& b) {
        Matrix result;
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                result[i][j] = dot(a[i], Point<double, 3>(b[0][j], b[1][j], b[2][j]));
        return result;
    }

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

}  // namespace quarn::bench
