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

class OutlineFinder {
public:
    OutlineFinder(const std::vector<Triangle>& meshTriangles, const MeshSurface& meshSurface)
        : triangles(meshTriangles), surface(meshSurface), islands(triangles.size()) {}

    MeshOutline find();

private:
    void joinIslands();
    void findIslands();
    void findRims();
    void findHoles();
    [[nodiscard]] double lengthOf(const std::vector<std::uint32_t>& edges) const;

    const std::vector<Triangle>& triangles;
    const MeshSurface& surface;
    Groups islands;
    std::vector<bool> isIsland;  // by the triangle that stands for it
    std::vector<std::uint32_t> rimEdges;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> rimEnds;  // of each of these
    MeshOutline outline;
};

MeshOutline OutlineFinder::find() {
    joinIslands();
    findIslands();
    findRims();
    findHoles();
    return std::move(outline);
}

void OutlineFinder::joinIslands() {
    const auto add = [&](std::span<const EdgeUse> uses) {
        const EdgeUse& first = uses[0];
        for (const EdgeUse& use : uses.subspan(1)) (void)islands.join(first.triangle(), use.triangle());
        if (uses.size() % 2 == 0) return;
        rimEdges.push_back(first.edge);
        rimEnds.emplace_back(first.low, first.high);
    };
    if (hasMissingUV(triangles)) {
        surface.edges.forEach(add);
        return;
    }
    const CornerNumbers corners = numberCorners(triangles, CornerIdentity::PositionAndUV);
    std::vector<bool> isUsed(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        isUsed[i] = !surface.isDuplicate[i] && !hasRepeatedCorner(corners[i]);
    Edges(corners, isUsed).forEach(add);
}

void OutlineFinder::findIslands() {
    isIsland.resize(triangles.size());
    for (std::uint32_t i = 0; i < triangles.size(); ++i) {
        const std::uint32_t island = islands.groupOf(i);
        if (!surface.isUsed[i] || isIsland[island]) continue;
        isIsland[island] = true;
        outline.islands.push_back(i);
    }
}

void OutlineFinder::findRims() {
    for (EdgeChain& chain : joinEdges(rimEnds)) {
        for (std::uint32_t& edge : chain.edges) edge = rimEdges[edge];
        const std::uint32_t island = islands.groupOf(chain.edges.front() / 3);
        if (!isIsland[island]) continue;
        const double length = lengthOf(chain.edges);
        outline.rims.push_back(
            {.island = island, .edges = std::move(chain.edges), .length = length, .isHole = false});
    }
}

double OutlineFinder::lengthOf(const std::vector<std::uint32_t>& edges) const {
    const auto positionAt = [&](std::uint32_t corner) {
        return triangles[corner / 3].vertices.at(corner % 3).position;
    };
    double sum = 0.0;
    for (const std::uint32_t edge : edges) sum += length(positionAt(nextCorner(edge)) - positionAt(edge));
    return sum;
}

void OutlineFinder::findHoles() {
    // Where islands meet.
    std::vector<bool> isSeam(triangles.size() * 3);
    if (outline.islands.size() > surface.pieces.size())
        surface.edges.forEach([&](std::span<const EdgeUse> uses) {
            const std::uint32_t island = islands.groupOf(uses[0].triangle());
            if (std::any_of(uses.begin(), uses.end(),
                            [&](const EdgeUse& use) { return islands.groupOf(use.triangle()) != island; }))
                for (const EdgeUse& use : uses) isSeam[use.edge] = true;
        });

    std::vector<const Rim*> longest(triangles.size());
    for (const Rim& rim : outline.rims) {
        const Rim*& best = longest[rim.island];
        if (best == nullptr || rim.length > best->length) best = &rim;
    }
    for (Rim& rim : outline.rims)
        rim.isHole =
            longest[rim.island] != &rim && !std::all_of(rim.edges.begin(), rim.edges.end(),
                                                        [&](std::uint32_t edge) { return isSeam[edge]; });
}

}  // namespace

MeshOutline outlineOf(const std::vector<Triangle>& triangles, const MeshSurface& surface) {
    return OutlineFinder(triangles, surface).find();
}

}  // namespace quarn
