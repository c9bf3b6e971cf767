#include "TriangleSubdivision.h"

#include <cmath>

namespace quarn::detail {
namespace {

using Vertex = TriangleVertex;

double angleAt(const Vertex& corner, const Vertex& first, const Vertex& second) {
    return std::acos(
        dot(normalized(first.position - corner.position), normalized(second.position - corner.position)));
}

// A visitor that stores the pieces.
class PieceList {
public:
    explicit PieceList(std::vector<Triangle>& output) : pieces(output) {}
    [[nodiscard]] static constexpr bool isFull() { return false; }
    void take(const Triangle& piece) { pieces.push_back(piece); }

private:
    std::vector<Triangle>& pieces;
};

// A visitor that counts the pieces without storing them.
class PieceCount {
public:
    explicit PieceCount(std::uint64_t maxPieces) : maxCount(maxPieces) {}
    [[nodiscard]] bool isFull() const { return count >= maxCount; }
    void take(const Triangle& /*piece*/) { ++count; }
    [[nodiscard]] std::uint64_t pieces() const { return count; }

private:
    std::uint64_t maxCount;
    std::uint64_t count = 0;
};

// Subdivides a triangle, and its pieces recursively, until all edges are within the bound or the
// visitor is full.
template <class Visitor>
class Splitter {
public:
    Splitter(double maxEdgeLength, Visitor& visitor) : bound(maxEdgeLength), pieces(visitor) {}

    void split(const Triangle& triangle) {
        if (pieces.isFull()) return;
        const auto& [v0, v1, v2] = triangle.vertices;
        const bool isLong01 = isLong(v0, v1);
        const bool isLong12 = isLong(v1, v2);
        const bool isLong20 = isLong(v2, v0);
        if (isLong01 && isLong12 && isLong20)
            splitAll(v0, v1, v2);
        else if (isLong01 && isLong12)
            splitTwo(v0, v1, v2);
        else if (isLong12 && isLong20)
            splitTwo(v1, v2, v0);
        else if (isLong20 && isLong01)
            splitTwo(v2, v0, v1);
        else if (isLong01)
            splitOne(v0, v1, v2);
        else if (isLong12)
            splitOne(v1, v2, v0);
        else if (isLong20)
            splitOne(v2, v0, v1);
        else
            pieces.take(triangle);
    }

private:
    [[nodiscard]] bool isLong(const Vertex& a, const Vertex& b) const {
        return length(b.position - a.position) > bound;
    }

    void splitPiece(const Vertex& a, const Vertex& b, const Vertex& c) {
        Triangle piece;
        piece.vertices = {a, b, c};
        piece.computeCentroids();
        split(piece);
    }

    // Subdivides a triangle of which only the edge a-b is long.
    void splitOne(const Vertex& a, const Vertex& b, const Vertex& c) {
        const Vertex m = Vertex::midpoint(a, b);
        splitPiece(a, m, c);
        splitPiece(m, b, c);
    }

    // Subdivides a triangle of which the edges a-b and b-c are long. The quadrilateral without the
    // corner b is split along the diagonal that divides its corner more evenly.
    void splitTwo(const Vertex& a, const Vertex& b, const Vertex& c) {
        const Vertex m = Vertex::midpoint(a, b);
        const Vertex n = Vertex::midpoint(b, c);
        const double unevenAtA = std::abs(angleAt(a, m, n) - angleAt(a, n, c));
        const double unevenAtC = std::abs(angleAt(c, n, m) - angleAt(c, m, a));
        if (unevenAtA > unevenAtC) {
            splitPiece(a, m, c);
            splitPiece(m, n, c);
        } else {
            splitPiece(a, n, c);
            splitPiece(a, m, n);
        }
        splitPiece(m, b, n);
    }

    void splitAll(const Vertex& v0, const Vertex& v1, const Vertex& v2) {
        const Vertex m01 = Vertex::midpoint(v0, v1);
        const Vertex m12 = Vertex::midpoint(v1, v2);
        const Vertex m20 = Vertex::midpoint(v2, v0);
        splitPiece(v0, m01, m20);
        splitPiece(m01, m12, m20);
        splitPiece(m01, v1, m12);
        splitPiece(m20, m12, v2);
    }

    double bound;
    Visitor& pieces;
};

}  // namespace

void splitTriangle(const Triangle& triangle, double maxEdgeLength, std::vector<Triangle>& pieces) {
    PieceList list(pieces);
    Splitter(maxEdgeLength, list).split(triangle);
}

std::uint64_t countPieces(const Triangle& triangle, double maxEdgeLength, std::uint64_t maxCount) {
    PieceCount count(maxCount);
    Splitter(maxEdgeLength, count).split(triangle);
    return count.pieces();
}

}  // namespace quarn::detail
