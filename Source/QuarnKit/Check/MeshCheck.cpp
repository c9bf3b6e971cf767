#include "MeshCheck.h"

#include <array>
#include <iterator>

#include <QuarnKit/Base/ThreadPool.h>
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

void checkShape(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                std::vector<Finding>& findings) {
    checkTriangles(mesh, surface, findings);
    checkSurface(mesh, surface, findings);
    checkBoundary(mesh, surface, unit, findings);
}

// The size is checked here to balance the time of both halves.
void checkUvAndSize(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                    UvChecks uvChecks, std::vector<Finding>& findings) {
    if (uvChecks == UvChecks::All) checkUv(mesh, surface, findings);
    if (mesh.canHaveUV) checkUvIndex(mesh, findings);
    checkSize(mesh, unit, findings);
    checkRounding(mesh, surface, unit, findings);
    checkUnusedVertices(mesh, findings);
}

}  // namespace

std::vector<Finding> checkMesh(const CheckedMesh& mesh, const std::string& unit, UvChecks uvChecks) {
    std::vector<Finding> findings;
    if (!checkFinite(mesh, findings)) return findings;
    const MeshTopology surface = buildMeshTopology(mesh.triangles);
    std::array<std::vector<Finding>, 2> halves;
    ThreadPool(halves.size()).parallelFor(halves.size(), [&](std::size_t half) {
        if (half == 0)
            checkShape(mesh, surface, unit, halves[0]);
        else
            checkUvAndSize(mesh, surface, unit, uvChecks, halves[1]);
    });
    for (std::vector<Finding>& half : halves)
        findings.insert(findings.end(), std::make_move_iterator(half.begin()),
                        std::make_move_iterator(half.end()));
    return findings;
}

}  // namespace quarn
