#include "MeshTopology.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

#include "EdgeChains.h"
#include "PointIds.h"

namespace quarn {

namespace {

// Of triangles that have not been counted yet, and of those with two equal corners.
constexpr std::uint32_t kUncounted = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kNoPiece = kUncounted - 1;

// Triangles in pieces, each with whether it faces as the first one of its piece does.
class Pieces {
public:
    explicit Pieces(std::size_t count) : parents(count), turns(count, 0) {
        std::iota(parents.begin(), parents.end(), 0U);
    }

    struct Place {
        std::uint32_t root;
        bool isTurned;  // against the root
    };

    Place placeOf(std::uint32_t triangle) {
        Place place{triangle, false};
        while (parents[place.root] != place.root) {
            place.isTurned = place.isTurned != (turns[place.root] != 0);
            place.root = parents[place.root];
        }
        // The way is cut short for the next question.
        bool isTurned = place.isTurned;
        while (parents[triangle] != place.root && triangle != place.root) {
            const std::uint32_t next = parents[triangle];
            const bool isNextTurned = isTurned != (turns[triangle] != 0);
            parents[triangle] = place.root;
            turns[triangle] = isTurned ? 1 : 0;
            triangle = next;
            isTurned = isNextTurned;
        }
        return place;
    }

    // Where the two are joined already, what was known stays.
    void join(std::uint32_t a, std::uint32_t b, bool isOpposite) {
        Place first = placeOf(a);
        Place second = placeOf(b);
        if (first.root == second.root) return;
        if (second.root < first.root) std::swap(first, second);
        parents[second.root] = first.root;
        turns[second.root] = (first.isTurned != second.isTurned) != isOpposite ? 1 : 0;
    }

private:
    std::vector<std::uint32_t> parents;
    std::vector<std::uint8_t> turns;
};

struct SharedEdge {
    std::uint64_t points;  // the lesser one in the upper half
    std::uint32_t edge;
    bool operator<(const SharedEdge& other) const {
        return points != other.points ? points < other.points : edge < other.edge;
    }
};

class TopologyFinder {
public:
    TopologyFinder(const std::vector<TriangleCorners>& meshTriangles, const std::vector<TriangleUVs>& meshUVs)
        : triangles(meshTriangles),
          uvs(meshUVs),
          ids(triangles.size() / 2),
          pieces(triangles.size()),
          pieceOf(triangles.size(), kUncounted) {}

    MeshTopology find();

private:
    void collectEdges();
    void joinTriangles();
    void findTurned();
    void findLoops();
    [[nodiscard]] std::uint32_t from(std::uint32_t edge) const { return corners[edge]; }
    [[nodiscard]] std::uint32_t to(std::uint32_t edge) const { return corners[nextCorner(edge)]; }
    [[nodiscard]] static std::uint32_t nextCorner(std::uint32_t edge) {
        return edge % 3 == 2 ? edge - 2 : edge + 1;
    }
    [[nodiscard]] const Point<double, 2>& uvOf(std::uint32_t corner) const {
        return uvs[corner / 3].at(corner % 3);
    }
    [[nodiscard]] bool isSeam(std::uint32_t a, std::uint32_t b) const;

    const std::vector<TriangleCorners>& triangles;
    const std::vector<TriangleUVs>& uvs;
    PointIds ids;
    Pieces pieces;
    std::vector<std::uint32_t> corners;  // numbers of their positions
    std::vector<SharedEdge> edges;
    std::vector<std::uint32_t> openEdges;
    std::vector<std::uint32_t> pieceOf;  // of each triangle
    MeshTopology result;
};

MeshTopology TopologyFinder::find() {
    collectEdges();
    joinTriangles();
    findTurned();
    findLoops();
    return std::move(result);
}

void TopologyFinder::collectEdges() {
    for (const TriangleCorners& triangle : triangles)
        for (const Point<double, 3>& corner : triangle) corners.push_back(ids.idOf(corner));
    for (std::uint32_t edge = 0; edge < corners.size(); edge += 3) {
        const auto a = corners[edge];
        const auto b = corners[edge + 1];
        const auto c = corners[edge + 2];
        if (a == b || b == c || c == a) {
            pieceOf[edge / 3] = kNoPiece;
            continue;
        }
        for (std::uint32_t i = edge; i < edge + 3; ++i) {
            const auto [low, high] = std::minmax({from(i), to(i)});
            edges.push_back({(std::uint64_t{low} << 32U) | high, i});
        }
    }
    std::sort(edges.begin(), edges.end());
}

void TopologyFinder::joinTriangles() {
    for (std::size_t i = 0; i < edges.size();) {
        std::size_t end = i;
        while (end < edges.size() && edges[end].points == edges[i].points) ++end;
        const std::uint32_t first = edges[i].edge;
        if (end - i == 1) openEdges.push_back(first);
        if (end - i == 2) {
            const std::uint32_t second = edges[i + 1].edge;
            // Neighbours that face one way run along their edge in opposite directions.
            pieces.join(first / 3, second / 3, from(first) == from(second));
            if (isSeam(first, second)) result.seams.insert(result.seams.end(), {first, second});
        }
        i = end;
    }
    std::sort(openEdges.begin(), openEdges.end());
}

// At the pole of a dome the UV of one corner differs from triangle to triangle, which is no seam.
bool TopologyFinder::isSeam(std::uint32_t a, std::uint32_t b) const {
    if (uvs.empty()) return false;
    const bool isSameWay = from(a) == from(b);
    return uvOf(a) != uvOf(isSameWay ? b : nextCorner(b)) &&
           uvOf(nextCorner(a)) != uvOf(isSameWay ? nextCorner(b) : b);
}

void TopologyFinder::findTurned() {
    std::vector<std::int64_t> balance(triangles.size(),
                                      0);  // of a piece, at its root: as the root less the others
    for (std::uint32_t i = 0; i < triangles.size(); ++i) {
        const auto [root, isTurned] = pieces.placeOf(i);
        balance[root] += isTurned ? -1 : 1;
    }
    std::vector<std::uint32_t> numbers(triangles.size(), kUncounted);
    for (std::uint32_t i = 0; i < triangles.size(); ++i) {
        const auto [root, isTurned] = pieces.placeOf(i);
        if (pieceOf[i] != kNoPiece) {
            if (numbers[root] == kUncounted) numbers[root] = result.pieces++;
            pieceOf[i] = numbers[root];
        }
        result.isTurned.push_back(isTurned == (balance[root] >= 0));
    }
}

void TopologyFinder::findLoops() {
    std::stable_sort(openEdges.begin(), openEdges.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return pieceOf[a / 3] < pieceOf[b / 3]; });
    for (std::size_t i = 0; i < openEdges.size();) {
        const std::uint32_t piece = pieceOf[openEdges[i] / 3];
        const std::size_t begin = i;
        std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
        for (; i < openEdges.size() && pieceOf[openEdges[i] / 3] == piece; ++i)
            pairs.emplace_back(from(openEdges[i]), to(openEdges[i]));
        for (const EdgeChain& chain : joinEdges(pairs)) {
            EdgeLoop loop{.points = {}, .edges = {}, .piece = piece};
            for (const std::uint32_t point : chain.points) loop.points.push_back(ids.points()[point]);
            for (const std::uint32_t edge : chain.edges) loop.edges.push_back(openEdges[begin + edge]);
            result.loops.push_back(std::move(loop));
        }
    }
}

}  // namespace

MeshTopology topologyOf(const std::vector<TriangleCorners>& triangles, const std::vector<TriangleUVs>& uvs) {
    return TopologyFinder(triangles, uvs).find();
}

}  // namespace quarn
