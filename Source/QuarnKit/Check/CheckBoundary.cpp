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
    findings.push_back(
        {.name = "hole",
         .count = cases.count(),
         .places = cases.first(),
         .text = counted(cases.count(), "hole") + ", the longest with " +
                 counted(longest->edges.size(), "edge") + " and " +
                 roundedNumberText(longest->length, kLengthDigits) + " " + unit + " around",
         .hint = "fill them, or merge the vertices where two boundaries should be one; a screen has "
                 "one boundary"});
}

}  // namespace

void checkBoundary(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                   std::vector<Finding>& findings) {
    const MeshBoundary boundary = findMeshBoundary(mesh.triangles, surface);
    addHoles(mesh, boundary.loops, unit, findings);
    const std::size_t islands = boundary.islands.size();
    if (islands > surface.components.size())
        findings.push_back({.name = "uv-islands",
                            .count = islands,
                            .places = Cases(mesh, std::span(boundary.islands).subspan(1)).first(),
                            .text = "the UV map has " + counted(islands, "island") + " and the surface " +
                                    counted(surface.components.size(), "component"),
                            .hint = "unwrap it as one island; UV seams count as boundary edges"});
}

}  // namespace quarn
