#include "BoundaryLoops.h"

#include <algorithm>
#include <utility>

#include "EdgeLoops.h"
#include "UnionFind.h"

namespace quarn {

namespace {

bool hasMissingUV(const std::vector<Triangle>& triangles) {
    return std::any_of(triangles.begin(), triangles.end(), [](const Triangle& triangle) {
        return std::any_of(triangle.vertices.begin(), triangle.vertices.end(),
                           [](const TriangleVertex& corner) { return corner.uv == kNoUV; });
    });
}

class BoundaryFinder {
public:
    BoundaryFinder(const std::vector<Triangle>& meshTriangles, const MeshTopology& meshTopology)
        : triangles(meshTriangles), topology(meshTopology), islands(triangles.size()) {}

    MeshBoundary find();

private:
    void joinIslands();
    void findIslands();
    void findLoops();
    void findHoles();
    [[nodiscard]] double lengthOf(const std::vector<std::uint32_t>& edges) const;

    const std::vector<Triangle>& triangles;
    const MeshTopology& topology;
    UnionFind islands;
    std::vector<bool> isIsland;  // by the root triangle of the island
    std::vector<std::uint32_t> boundaryEdges;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> boundaryEnds;  // vertices of these edges
    MeshBoundary boundary;
};

MeshBoundary BoundaryFinder::find() {
    joinIslands();
    findIslands();
    findLoops();
    findHoles();
    return std::move(boundary);
}

void BoundaryFinder::joinIslands() {
    const auto add = [&](std::span<const HalfEdge> halfEdges) {
        const HalfEdge& first = halfEdges[0];
        for (const HalfEdge& halfEdge : halfEdges.subspan(1))
            (void)islands.unite(first.triangle(), halfEdge.triangle());
        if (halfEdges.size() % 2 == 0) return;
        boundaryEdges.push_back(first.edge);
        boundaryEnds.emplace_back(first.low, first.high);
    };
    if (hasMissingUV(triangles)) {
        topology.edges.forEach(add);
        return;
    }
    const CornerIds corners = buildCornerIds(triangles, CornerIdentity::PositionAndUV);
    std::vector<bool> isUsed(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        isUsed[i] = !topology.isDuplicate[i] && !hasRepeatedCorner(corners[i]);
    Edges(corners, isUsed).forEach(add);
}

void BoundaryFinder::findIslands() {
    isIsland.resize(triangles.size());
    for (std::uint32_t i = 0; i < triangles.size(); ++i) {
        const std::uint32_t island = islands.findRoot(i);
        if (!topology.isUsed[i] || isIsland[island]) continue;
        isIsland[island] = true;
        boundary.islands.push_back(i);
    }
}

void BoundaryFinder::findLoops() {
    for (EdgeLoop& path : buildEdgeLoops(boundaryEnds)) {
        for (std::uint32_t& edge : path.edges) edge = boundaryEdges[edge];
        const std::uint32_t island = islands.findRoot(path.edges.front() / 3);
        if (!isIsland[island]) continue;
        const double length = lengthOf(path.edges);
        boundary.loops.push_back(
            {.island = island, .edges = std::move(path.edges), .length = length, .isHole = false});
    }
}

double BoundaryFinder::lengthOf(const std::vector<std::uint32_t>& edges) const {
    const auto positionAt = [&](std::uint32_t corner) {
        return triangles[corner / 3].vertices.at(corner % 3).position;
    };
    double sum = 0.0;
    for (const std::uint32_t edge : edges) sum += length(positionAt(nextCorner(edge)) - positionAt(edge));
    return sum;
}

void BoundaryFinder::findHoles() {
    // A seam is an edge between two islands.
    std::vector<bool> isSeam(triangles.size() * 3);
    if (boundary.islands.size() > topology.components.size())
        topology.edges.forEach([&](std::span<const HalfEdge> halfEdges) {
            const std::uint32_t island = islands.findRoot(halfEdges[0].triangle());
            if (std::any_of(halfEdges.begin(), halfEdges.end(), [&](const HalfEdge& halfEdge) {
                    return islands.findRoot(halfEdge.triangle()) != island;
                }))
                for (const HalfEdge& halfEdge : halfEdges) isSeam[halfEdge.edge] = true;
        });

    std::vector<const BoundaryLoop*> longest(triangles.size());
    for (const BoundaryLoop& loop : boundary.loops) {
        const BoundaryLoop*& best = longest[loop.island];
        if (best == nullptr || loop.length > best->length) best = &loop;
    }
    for (BoundaryLoop& loop : boundary.loops)
        loop.isHole =
            longest[loop.island] != &loop && !std::all_of(loop.edges.begin(), loop.edges.end(),
                                                          [&](std::uint32_t edge) { return isSeam[edge]; });
}

}  // namespace

MeshBoundary findMeshBoundary(const std::vector<Triangle>& triangles, const MeshTopology& topology) {
    return BoundaryFinder(triangles, topology).find();
}

}  // namespace quarn
