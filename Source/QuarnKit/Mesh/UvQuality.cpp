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
            states.push_back(isDegenerateTriangle<2>(uvs) ? UvState::Degenerate : UvState::Good);
    }
    return states;
}

UvOverlaps uvOverlapsOf(const std::vector<Triangle>& triangles, const std::vector<UvState>& states,
                        const MeshTopology& topology) {
    std::vector<TriangleUVs> uvs;
    std::vector<std::uint32_t> indices;
    for (std::uint32_t i = 0; i < states.size(); ++i) {
        if (states[i] != UvState::Good || topology.isDuplicate[i]) continue;
        uvs.push_back(uvsOf(triangles[i]));
        indices.push_back(i);
    }
    UvOverlaps overlaps = findUvOverlaps(uvs);
    for (std::uint32_t& triangle : overlaps.triangles) triangle = indices[triangle];
    return overlaps;
}

std::vector<bool> findOriented(const std::vector<UvState>& states, const MeshTopology& topology) {
    std::vector<bool> isOriented(states.size());
    for (std::size_t i = 0; i < states.size(); ++i)
        isOriented[i] = states[i] == UvState::Good && topology.isUsed[i] && !topology.isDegenerate[i];
    return isOriented;
}

std::vector<bool> findMirrored(const std::vector<Triangle>& triangles, const std::vector<bool>& isOriented,
                               const MeshTopology& topology) {
    const auto isPositive = [&](std::size_t i) {
        return (signedUvArea(uvsOf(triangles[i])) > 0.0) != topology.isFlipped[i];
    };
    std::vector<std::array<std::uint32_t, 2>> counts(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i)
        if (isOriented[i]) ++counts[topology.patches[i]][isPositive(i) ? 1 : 0];
    std::vector<bool> isMirrored(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        if (!isOriented[i]) continue;
        const auto [negative, positive] = counts[topology.patches[i]];
        // In a tie, those are mirrored that are mirrored on a patch whose front faces the viewer.
        isMirrored[i] = isPositive(i) ? positive <= negative : negative < positive;
    }
    return isMirrored;
}

}  // namespace quarn
