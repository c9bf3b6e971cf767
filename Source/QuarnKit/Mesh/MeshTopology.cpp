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

std::vector<bool> degenerateAmong(const std::vector<Triangle>& triangles, const CornerNumbers& corners) {
    std::vector<bool> isDegenerate(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i)
        isDegenerate[i] = hasRepeatedCorner(corners[i]) || isSliver<3>(cornersOf(triangles[i]));
    return isDegenerate;
}

// Triangles with the corners of an earlier one, in any turn or order.
std::vector<bool> duplicatesAmong(const CornerNumbers& corners) {
    std::vector<bool> isDuplicate(corners.size());
    PointIds<3> ids(corners.size());
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

std::vector<bool> usedAmong(const CornerNumbers& corners, const std::vector<bool>& isDuplicate) {
    std::vector<bool> isUsed(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        isUsed[i] = !isDuplicate[i] && !hasRepeatedCorner(corners[i]);
    return isUsed;
}

// Triangles on a side of a sheet that fewer have. Where both have as many, the sheet's first triangle is right.
std::vector<bool> turnedIn(const MeshSurface& surface, const std::vector<bool>& sides) {
    constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
    const auto& sheets = surface.sheets;
    std::vector<std::array<std::uint32_t, 2>> counts(sheets.size());
    std::vector<std::uint32_t> firsts(sheets.size(), kNone);
    for (std::uint32_t i = 0; i < sheets.size(); ++i) {
        if (!surface.isUsed[i]) continue;
        ++counts[sheets[i]][sides[i] ? 1 : 0];
        if (firsts[sheets[i]] == kNone) firsts[sheets[i]] = i;
    }
    std::vector<bool> isTurned(sheets.size());
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (!surface.isUsed[i]) continue;
        const auto [even, odd] = counts[sheets[i]];
        const bool rightSide = even == odd ? sides[firsts[sheets[i]]] : odd > even;
        isTurned[i] = sides[i] != rightSide;
    }
    return isTurned;
}

void joinTriangles(MeshSurface& surface) {
    const std::size_t count = surface.corners.size();
    Groups sheets(count);
    Groups pieces(count);
    surface.edges.forEach([&](std::span<const EdgeUse> uses) {
        const std::uint32_t first = uses[0].triangle();
        for (const EdgeUse& use : uses.subspan(1)) (void)pieces.join(first, use.triangle());
        if (uses.size() > 2) surface.crowded.push_back(uses[2].triangle());
        if (uses.size() == 2 &&
            !sheets.join(first, uses[1].triangle(), uses[0].isForward == uses[1].isForward))
            surface.oneSided.push_back(uses[1].triangle());
    });

    surface.sheets.resize(count);
    std::vector<bool> sides(count);
    std::vector<bool> isKnown(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        surface.sheets[i] = sheets.groupOf(i);
        sides[i] = sheets.sideOf(i);
        const std::uint32_t piece = pieces.groupOf(i);
        if (!surface.isUsed[i] || isKnown[piece]) continue;
        isKnown[piece] = true;
        surface.pieces.push_back(i);
    }
    surface.isTurned = turnedIn(surface, sides);
}

}  // namespace

MeshSurface meshSurfaceOf(const std::vector<Triangle>& triangles) {
    CornerNumbers corners = numberCorners(triangles, CornerIdentity::Position);
    std::vector<bool> isDuplicate = duplicatesAmong(corners);
    std::vector<bool> isUsed = usedAmong(corners, isDuplicate);
    Edges edges(corners, isUsed);
    MeshSurface surface{.corners = std::move(corners),
                        .edges = std::move(edges),
                        .isDegenerate = {},
                        .isDuplicate = std::move(isDuplicate),
                        .isUsed = std::move(isUsed),
                        .sheets = {},
                        .isTurned = {},
                        .pieces = {},
                        .crowded = {},
                        .oneSided = {}};
    surface.isDegenerate = degenerateAmong(triangles, surface.corners);
    joinTriangles(surface);
    return surface;
}

}  // namespace quarn
