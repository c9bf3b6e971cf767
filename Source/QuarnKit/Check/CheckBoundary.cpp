#include "CheckBoundary.h"

#include <algorithm>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Mesh/BoundaryLoops.h>

namespace quarn {

namespace {

constexpr int kLengthDigits = 4;

void addHoles(const CheckedMesh& mesh, const std::vector<Rim>& rims, const std::string& unit,
              std::vector<Finding>& findings) {
    std::vector<std::uint32_t> beside;
    const Rim* longest = nullptr;
    for (const Rim& rim : rims) {
        if (!rim.isHole) continue;
        beside.push_back(rim.edges.front() / 3);
        if (longest == nullptr || rim.length > longest->length) longest = &rim;
    }
    if (longest == nullptr) return;
    std::sort(beside.begin(), beside.end());
    const Cases cases(mesh, beside);
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

void checkOutline(const CheckedMesh& mesh, const MeshSurface& surface, const std::string& unit,
                  std::vector<Finding>& findings) {
    const MeshOutline outline = outlineOf(mesh.triangles, surface);
    addHoles(mesh, outline.rims, unit, findings);
    const std::size_t islands = outline.islands.size();
    if (islands > surface.pieces.size())
        findings.push_back({.name = "uv-pieces",
                            .count = islands,
                            .places = Cases(mesh, std::span(outline.islands).subspan(1)).first(),
                            .text = "the UV map is in " + counted(islands, "part") + " and the surface in " +
                                    std::to_string(surface.pieces.size()),
                            .hint = "unwrap it in one part; seams in UV are edges of the outline"});
}

}  // namespace quarn
