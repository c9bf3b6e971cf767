#include "Check/CheckOutline.h"

#include <algorithm>

#include "Check/Edges.h"
#include "Check/Groups.h"
#include "Check/Loops.h"
#include "NumberText.h"

namespace quarn {

namespace {

constexpr int kLengthDigits = 4;

// Corners of one number have one position, so that those of the triangle beside the edge serve.
double lengthOf(const Loop& loop, const CheckedMesh& mesh, const CornerNumbers& corners) {
    double sum = 0.0;
    for (const EdgeUse& use : loop) {
        const auto& numbers = corners[use.triangle];
        const auto positionAt = [&](std::uint32_t corner) {
            const auto place =
                static_cast<std::size_t>(std::find(numbers.begin(), numbers.end(), corner) - numbers.begin());
            return mesh.triangles[use.triangle].vertices.at(place).position;
        };
        sum += length(positionAt(use.high) - positionAt(use.low));
    }
    return sum;
}

// A loop of an island, a part that hangs together in position and UV.
struct Rim {
    std::uint32_t island;
    std::uint32_t triangle;
    double length;
    std::size_t edges;
};

// The longest loop of each island is its outline, the others are holes.
std::vector<Rim> holesAmong(std::vector<Rim> rims) {
    std::stable_sort(rims.begin(), rims.end(), [](const Rim& a, const Rim& b) {
        return a.island != b.island ? a.island < b.island : a.length > b.length;
    });
    std::vector<Rim> holes;
    for (std::size_t i = 1; i < rims.size(); ++i)
        if (rims[i].island == rims[i - 1].island) holes.push_back(rims[i]);
    std::sort(holes.begin(), holes.end(), [](const Rim& a, const Rim& b) { return a.triangle < b.triangle; });
    return holes;
}

void addHoles(const CheckedMesh& mesh, const std::vector<Rim>& holes, const std::string& unit,
              std::vector<Finding>& findings) {
    if (holes.empty()) return;
    Cases cases(mesh);
    for (const Rim& hole : holes) cases.add(hole.triangle);
    const auto longest = std::max_element(holes.begin(), holes.end(),
                                          [](const Rim& a, const Rim& b) { return a.length < b.length; });
    findings.push_back({.name = "hole",
                        .count = cases.count(),
                        .places = cases.first(),
                        .text = counted(cases.count(), "hole") + ", the longest with " +
                                counted(longest->edges, "edge") + " and " +
                                roundedNumberText(longest->length, kLengthDigits) + " " + unit + " around",
                        .hint = "fill them, or merge the corners where two rims should be one; a screen has "
                                "one outline"});
}

bool hasMissingUV(const std::vector<Triangle>& triangles) {
    return std::any_of(triangles.begin(), triangles.end(), [](const Triangle& triangle) {
        return std::any_of(triangle.vertices.begin(), triangle.vertices.end(),
                           [](const TriangleVertex& corner) { return corner.uv == kNoUV; });
    });
}

}  // namespace

void checkOutline(const CheckedMesh& mesh, const Surface& surface, const std::vector<bool>& isDuplicate,
                  const std::string& unit, std::vector<Finding>& findings) {
    // Where UVs are missing every triangle without them would be a part of its own.
    const CornerNumbers corners =
        numberCorners(mesh.triangles, hasMissingUV(mesh.triangles) ? CornerIdentity::Position
                                                                   : CornerIdentity::PositionAndUV);
    std::vector<bool> isUsed(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        isUsed[i] = !isDuplicate[i] && !hasRepeatedCorner(corners[i]);

    Groups islands(corners.size());
    std::vector<EdgeUse> rim;
    Edges(corners, isUsed).forEach([&](std::span<const EdgeUse> uses) {
        for (const EdgeUse& use : uses.subspan(1)) (void)islands.join(uses.front().triangle, use.triangle);
        if (uses.size() % 2 == 1) rim.push_back(uses.front());
    });

    // An island of nothing but triangles without area is none.
    std::vector<bool> isIsland(corners.size());
    Cases further(mesh);
    std::uint64_t islandCount = 0;
    for (std::uint32_t i = 0; i < corners.size(); ++i) {
        if (!surface.isUsed[i] || isIsland[islands.groupOf(i)]) continue;
        isIsland[islands.groupOf(i)] = true;
        if (++islandCount > 1) further.add(i);
    }
    std::vector<Rim> rims;
    for (const Loop& loop : loopsOf(rim)) {
        const std::uint32_t island = islands.groupOf(loop.front().triangle);
        if (isIsland[island])
            rims.push_back({island, loop.front().triangle, lengthOf(loop, mesh, corners), loop.size()});
    }
    addHoles(mesh, holesAmong(std::move(rims)), unit, findings);
    if (islandCount > surface.pieces)
        findings.push_back({.name = "uv-pieces",
                            .count = islandCount,
                            .places = further.first(),
                            .text = "the UV map is in " + counted(islandCount, "part") +
                                    " and the surface in " + std::to_string(surface.pieces),
                            .hint = "unwrap it in one part; seams in UV are edges of the outline"});
}

}  // namespace quarn
