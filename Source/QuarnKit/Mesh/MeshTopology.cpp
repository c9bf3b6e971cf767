#include "MeshTopology.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "DegenerateTriangles.h"
#include "TriangleCorners.h"
#include "UnionFind.h"
#include "VertexIds.h"

namespace quarn {

namespace {

std::vector<bool> findDegenerate(const std::vector<Triangle>& triangles, const CornerIds& corners) {
    std::vector<bool> isDegenerate(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i)
        isDegenerate[i] = hasRepeatedCorner(corners[i]) || isDegenerateTriangle<3>(cornersOf(triangles[i]));
    return isDegenerate;
}

// Finds triangles with the vertices of an earlier one, in any order.
std::vector<bool> findDuplicates(const CornerIds& corners) {
    std::vector<bool> isDuplicate(corners.size());
    VertexIds<3> ids(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (hasRepeatedCorner(corners[i])) continue;
        auto ordered = corners[i];
        std::sort(ordered.begin(), ordered.end());
        const std::size_t known = ids.points().size();
        isDuplicate[i] = ids.idOf({static_cast<double>(ordered[0]), static_cast<double>(ordered[1]),
                                   static_cast<double>(ordered[2])}) < known;
    }
    return isDuplicate;
}

std::vector<bool> findUsed(const CornerIds& corners, const std::vector<bool>& isDuplicate) {
    std::vector<bool> isUsed(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        isUsed[i] = !isDuplicate[i] && !hasRepeatedCorner(corners[i]);
    return isUsed;
}

// Finds the triangles whose winding differs from the majority of their patch. In a tie, the first
// triangle of the patch is right.
std::vector<bool> findFlipped(const MeshTopology& topology, const std::vector<bool>& parities) {
    constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
    const auto& patches = topology.patches;
    std::vector<std::array<std::uint32_t, 2>> counts(patches.size());
    std::vector<std::uint32_t> firsts(patches.size(), kNone);
    for (std::uint32_t i = 0; i < patches.size(); ++i) {
        if (!topology.isUsed[i]) continue;
        ++counts[patches[i]][parities[i] ? 1 : 0];
        if (firsts[patches[i]] == kNone) firsts[patches[i]] = i;
    }
    std::vector<bool> isFlipped(patches.size());
    for (std::size_t i = 0; i < patches.size(); ++i) {
        if (!topology.isUsed[i]) continue;
        const auto [even, odd] = counts[patches[i]];
        const bool majorityParity = even == odd ? parities[firsts[patches[i]]] : odd > even;
        isFlipped[i] = parities[i] != majorityParity;
    }
    return isFlipped;
}

void joinTriangles(MeshTopology& topology) {
    const std::size_t count = topology.corners.size();
    UnionFind patches(count);
    UnionFind components(count);
    topology.edges.forEach([&](std::span<const HalfEdge> halfEdges) {
        const std::uint32_t first = halfEdges[0].triangle();
        for (const HalfEdge& halfEdge : halfEdges.subspan(1))
            (void)components.unite(first, halfEdge.triangle());
        if (halfEdges.size() > 2) topology.nonManifold.push_back(halfEdges[2].triangle());
        if (halfEdges.size() != 2) return;
        // Neighbors with the same winding traverse their common edge in opposite directions.
        const Parity parity =
            halfEdges[0].isForward == halfEdges[1].isForward ? Parity::Different : Parity::Same;
        if (!patches.unite(first, halfEdges[1].triangle(), parity))
            topology.nonOrientable.push_back(halfEdges[1].triangle());
    });

    topology.patches.resize(count);
    std::vector<bool> parities(count);
    constexpr auto kUnknown = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> numbers(count, kUnknown);  // of components, by root
    topology.componentOf.resize(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        topology.patches[i] = patches.findRoot(i);
        parities[i] = patches.parityOf(i);
        if (!topology.isUsed[i]) continue;
        std::uint32_t& number = numbers[components.findRoot(i)];
        if (number == kUnknown) {
            number = static_cast<std::uint32_t>(topology.components.size());
            topology.components.push_back(i);
        }
        topology.componentOf[i] = number;
    }
    topology.isFlipped = findFlipped(topology, parities);
}

}  // namespace

MeshTopology buildMeshTopology(const std::vector<Triangle>& triangles) {
    CornerIds corners = buildCornerIds(triangles, CornerIdentity::Position);
    std::vector<bool> isDuplicate = findDuplicates(corners);
    std::vector<bool> isUsed = findUsed(corners, isDuplicate);
    Edges edges(corners, isUsed);
    MeshTopology topology{.corners = std::move(corners),
                          .edges = std::move(edges),
                          .isDegenerate = {},
                          .isDuplicate = std::move(isDuplicate),
                          .isUsed = std::move(isUsed),
                          .patches = {},
                          .isFlipped = {},
                          .components = {},
                          .componentOf = {},
                          .nonManifold = {},
                          .nonOrientable = {}};
    topology.isDegenerate = findDegenerate(triangles, topology.corners);
    joinTriangles(topology);
    return topology;
}

}  // namespace quarn
