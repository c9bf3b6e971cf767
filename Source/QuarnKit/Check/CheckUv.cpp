#include "CheckUv.h"

#include <algorithm>

#include <QuarnKit/Mesh/UvQuality.h>

#include "MirroredMap.h"

namespace quarn {

namespace {

bool isOutside(const TriangleVertex& corner) {
    return !(corner.uv[0] >= 0.0 && corner.uv[0] <= 1.0 && corner.uv[1] >= 0.0 && corner.uv[1] <= 1.0);
}

void checkEach(const CheckedMesh& mesh, const MeshTopology& surface, const std::vector<UvState>& states,
               std::vector<Finding>& findings) {
    Cases missing(mesh);
    Cases outside(mesh);
    Cases flat(mesh);
    for (std::size_t i = 0; i < states.size(); ++i) {
        const auto& vertices = mesh.triangles[i].vertices;
        if (states[i] == UvState::Missing)
            missing.add(i);
        else if (std::any_of(vertices.begin(), vertices.end(), isOutside))
            outside.add(i);
        if (states[i] == UvState::Degenerate && !surface.isDegenerate[i]) flat.add(i);
    }
    addProblem(findings, "missing-uv", missing, "with a corner that has no UV",
               missing.count() == mesh.triangles.size() ? "unwrap the mesh and export it with UVs"
                                                        : "unwrap these too, else the mesh has no UV at all");
    addProblem(findings, "uv-outside", outside, "with a UV outside of 0 to 1",
               "scale the UV map into the unit square");
    addProblem(findings, "degenerate-uv", flat, "with zero area in UV",
               "unwrap them again; no UV maps to them");
}

void checkOverlap(const CheckedMesh& mesh, const UvOverlaps& overlaps, std::vector<Finding>& findings) {
    if (overlaps.triangles.empty()) return;
    addProblem(findings, "overlapping-uv", Cases(mesh, overlaps.triangles), "that overlap others in UV",
               "unwrap the surface so that each UV belongs to one position");
    if (overlaps.isComplete) return;
    findings.back().isCountExact = false;
    findings.back().text = "at least " + findings.back().text;
}

}  // namespace

void checkUv(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings) {
    if (!mesh.canHaveUV) {
        findings.push_back(
            {.name = "missing-uv",
             .count = mesh.triangles.size(),
             .text = counted(mesh.triangles.size(), "triangle") + " without UV, as in every STL file",
             .hint = "unwrap the mesh and export it as OBJ with UVs"});
        return;
    }
    const std::vector<UvState> states = uvStatesOf(mesh.triangles);
    checkEach(mesh, surface, states, findings);
    const std::vector<bool> isOriented = findOriented(states, surface);
    addProblem(findings, "mirrored-uv", Cases(mesh, findMirrored(mesh.triangles, isOriented, surface)),
               "whose UVs have the opposite orientation of their neighbors'",
               "the map folds there; unwrap it without folds");
    checkMirroredMap(mesh, isOriented, findings);
    checkOverlap(mesh, uvOverlapsOf(mesh.triangles, states, surface), findings);
}

}  // namespace quarn
