#include "Check/CheckUv.h"

#include <algorithm>
#include <utility>

#include "Check/MirroredUv.h"
#include "Check/Slivers.h"
#include "Check/UvOverlap.h"

namespace quarn {

namespace {

// Triangles by what their UVs are good for.
enum class UvState { Missing, Flat, Good };

bool isOutside(const TriangleVertex& corner) {
    return !(corner.uv[0] >= 0.0 && corner.uv[0] <= 1.0 && corner.uv[1] >= 0.0 && corner.uv[1] <= 1.0);
}

UvState stateOf(const Triangle& triangle) {
    const auto& vertices = triangle.vertices;
    if (std::any_of(vertices.begin(), vertices.end(),
                    [](const TriangleVertex& corner) { return corner.uv == kNoUV; }))
        return UvState::Missing;
    return isSliver<2>(cornersOf(vertices, &TriangleVertex::uv)) ? UvState::Flat : UvState::Good;
}

void checkOverlap(const CheckedMesh& mesh, const std::vector<UvState>& states,
                  const std::vector<bool>& isDuplicate, std::vector<Finding>& findings) {
    std::vector<UvTriangle> uvs;
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states[i] != UvState::Good || isDuplicate[i]) continue;
        uvs.push_back(cornersOf(mesh.triangles[i].vertices, &TriangleVertex::uv));
        indices.push_back(i);
    }
    const UvOverlaps overlaps = findUvOverlaps(uvs);
    Cases cases(mesh);
    for (const std::uint32_t i : overlaps.triangles) cases.add(indices[i]);
    addProblem(findings, "overlapping-uv", cases, "that overlap others in UV",
               "unwrap the surface so that each UV belongs to one place");
    if (cases.count() > 0 && !overlaps.isWhole) {
        findings.back().isCountWhole = false;
        findings.back().text = "at least " + findings.back().text;
    }
}

}  // namespace

void checkUv(const CheckedMesh& mesh, const Surface& surface, const std::vector<bool>& isDegenerate,
             const std::vector<bool>& isDuplicate, std::vector<Finding>& findings) {
    std::vector<UvState> states(mesh.triangles.size());
    Cases missing(mesh);
    Cases outside(mesh);
    Cases flat(mesh);
    for (std::size_t i = 0; i < states.size(); ++i) {
        const auto& vertices = mesh.triangles[i].vertices;
        states[i] = stateOf(mesh.triangles[i]);
        if (states[i] == UvState::Missing)
            missing.add(i);
        else if (std::any_of(vertices.begin(), vertices.end(), isOutside))
            outside.add(i);
        if (states[i] == UvState::Flat && !isDegenerate[i]) flat.add(i);
    }
    addProblem(findings, "missing-uv", missing, "with a corner that has no UV",
               missing.count() == mesh.triangles.size() ? "unwrap the mesh and export it with UVs"
                                                        : "unwrap these too, else the mesh has no UV at all");
    addProblem(findings, "uv-outside", outside, "with a UV outside of 0 to 1",
               "scale the UV map into the unit square");
    addProblem(findings, "degenerate-uv", flat, "without area in UV",
               "unwrap them anew; no UV leads to a place on them");

    std::vector<bool> isOriented(states.size());
    for (std::size_t i = 0; i < states.size(); ++i)
        isOriented[i] = states[i] == UvState::Good && surface.isUsed[i] && !isDegenerate[i];
    checkMirrored(mesh, surface, isOriented, findings);
    checkOverlap(mesh, states, isDuplicate, findings);
}

}  // namespace quarn
