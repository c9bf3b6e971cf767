#include "UvQuality.h"

#include <algorithm>
#include <array>

#include "DegenerateTriangles.h"
#include "TriangleCorners.h"

namespace quarn {

std::vector<UvState> uvStatesOf(const std::vector<Triangle>& triangles) {
    std::vector<UvState> states;
    states.reserve(triangles.size());
    for (const Triangle& triangle : triangles) {
        const TriangleUVs uvs = uvsOf(triangle);
        if (std::find(uvs.begin(), uvs.end(), kNoUV) != uvs.end())
            states.push_back(UvState::Missing);
        else
            states.push_back(isSliver<2>(uvs) ? UvState::Flat : UvState::Good);
    }
    return states;
}

UvOverlaps uvOverlapsOf(const std::vector<Triangle>& triangles, const std::vector<UvState>& states,
                        const MeshSurface& surface) {
    std::vector<TriangleUVs> uvs;
    std::vector<std::uint32_t> indices;
    for (std::uint32_t i = 0; i < states.size(); ++i) {
        if (states[i] != UvState::Good || surface.isDuplicate[i]) continue;
        uvs.push_back(uvsOf(triangles[i]));
        indices.push_back(i);
    }
    UvOverlaps overlaps = findUvOverlaps(uvs);
    for (std::uint32_t& triangle : overlaps.triangles) triangle = indices[triangle];
    return overlaps;
}

std::vector<bool> orientedAmong(const std::vector<UvState>& states, const MeshSurface& surface) {
    std::vector<bool> isOriented(states.size());
    for (std::size_t i = 0; i < states.size(); ++i)
        isOriented[i] = states[i] == UvState::Good && surface.isUsed[i] && !surface.isDegenerate[i];
    return isOriented;
}

std::vector<bool> mirroredAmong(const std::vector<Triangle>& triangles, const std::vector<bool>& isOriented,
                                const MeshSurface& surface) {
    const auto isPositive = [&](std::size_t i) {
        return (signedUvArea(uvsOf(triangles[i])) > 0.0) != surface.isTurned[i];
    };
    std::vector<std::array<std::uint32_t, 2>> counts(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i)
        if (isOriented[i]) ++counts[surface.sheets[i]][isPositive(i) ? 1 : 0];
    std::vector<bool> isMirrored(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        if (!isOriented[i]) continue;
        const auto [negative, positive] = counts[surface.sheets[i]];
        // Where both are as many, those that are mirrored for a sheet that faces the viewer.
        isMirrored[i] = isPositive(i) ? positive <= negative : negative < positive;
    }
    return isMirrored;
}

}  // namespace quarn
