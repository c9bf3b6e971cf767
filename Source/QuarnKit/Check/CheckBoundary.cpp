#include "CheckBoundary.h"

#include <algorithm>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Mesh/BoundaryLoops.h>

namespace quarn {

namespace {

constexpr int kLengthDigits = 4;

void addHoles(const CheckedMesh& mesh, const std::vector<BoundaryLoop>& loops, const std::string& unit,
              std::vector<Finding>& findings) {
    std::vector<std::uint32_t> adjacent;
    const BoundaryLoop* longest = nullptr;
    for (const BoundaryLoop& loop : loops) {
        if (!loop.isHole) continue;
        adjacent.push_back(loop.edges.front() / 3);
        if (longest == nullptr || loop.length > longest->length) longest = &loop;
    }
    if (longest == nullptr) return;
    std::sort(adjacent.begin(), adjacent.end());
    const Cases cases(mesh, adjacent);
    findings.push_back({.name = "hole",
                        .count = cases.count(),
                        .places = cases.first(),
                        .text = counted(cases.count(), "hole") + ", the longest with " +
                                counted(longest->edges.size(), "edge") + " and " +
                                roundedNumberText(longest->length, kLengthDigits) + " " + unit + " around",
                        .hint = "fill them, or merge the corners where two rims should be one; a screen has "
                                "one outline"});
}

}  // namespace

void checkBoundary(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                   std::vector<Finding>& findings) {
    const MeshBoundary boundary = findMeshBoundary(mesh.triangles, surface);
    addHoles(mesh, boundary.loops, unit, findings);
    const std::size_t islands = boundary.islands.size();
    if (islands > surface.components.size())
        findings.push_back({.name = "uv-pieces",
                            .count = islands,
                            .places = Cases(mesh, std::span(boundary.islands).subspan(1)).first(),
                            .text = "the UV map is in " + counted(islands, "part") + " and the surface in " +
                                    std::to_string(surface.components.size()),
                            .hint = "unwrap it in one part; seams in UV are edges of the outline"});
}

}  // namespace quarn
