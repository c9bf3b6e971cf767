#include "MeshCheck.h"

#include <QuarnKit/Formats/Obj/UvIndexLimit.h>

#include "CheckBoundary.h"
#include "CheckSize.h"
#include "CheckSurface.h"
#include "CheckTriangles.h"
#include "CheckUv.h"

namespace quarn {

namespace {

void checkUvIndex(const CheckedMesh& mesh, std::vector<Finding>& findings) {
    if (estimateUvIndex(detail::uvBoxesOf(mesh.triangles)).isWhole) return;
    findings.push_back({.name = "uv-index-too-large",
                        .count = mesh.triangles.size(),
                        .text = "the UVs of " + counted(mesh.triangles.size(), "triangle") +
                                " overlap in so many places that they cannot be indexed; no screen can be "
                                "built from the mesh",
                        .hint = "unwrap it so that triangles do not overlap in UV, and are no long strips"});
}

}  // namespace

std::vector<Finding> checkMesh(const CheckedMesh& mesh, const std::string& unit, UvChecks uvChecks) {
    std::vector<Finding> findings;
    if (!checkFinite(mesh, findings)) return findings;
    const MeshTopology surface = buildMeshTopology(mesh.triangles);
    checkTriangles(mesh, surface, findings);
    checkSurface(mesh, surface, findings);
    checkBoundary(mesh, surface, unit, findings);
    if (uvChecks == UvChecks::All) checkUv(mesh, surface, findings);
    if (mesh.canHaveUV) checkUvIndex(mesh, findings);
    checkSize(mesh, unit, findings);
    checkRounding(mesh, surface, unit, findings);
    checkUnusedVertices(mesh, findings);
    return findings;
}

}  // namespace quarn
