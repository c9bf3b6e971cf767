#include "CheckTriangles.h"

#include <algorithm>

#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

bool checkFinite(const CheckedMesh& mesh, std::vector<Finding>& findings) {
    Cases cases(mesh);
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const auto& vertices = mesh.triangles[i].vertices;
        if (!std::all_of(vertices.begin(), vertices.end(), [](const TriangleVertex& corner) {
                return isFinite(corner.position) && isFinite(corner.uv);
            }))
            cases.add(i);
    }
    addProblem(findings, "not-finite", cases, "with a position or UV that is not finite",
               "look for nan, inf and very large numbers; nothing else is checked until they are removed");
    return cases.count() == 0;
}

void checkTriangles(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings) {
    addProblem(findings, "degenerate-triangle", Cases(mesh, surface.isDegenerate),
               "with zero area: two corners coincide, or all three are collinear within float precision",
               "dissolve them; they have no normal, and nothing can be mapped inside of them");
    addProblem(findings, "duplicate-triangle", Cases(mesh, surface.isDuplicate),
               "with the three positions of an earlier one",
               "delete all but one; boundary edges are edges that occur once");
}

void checkUnusedVertices(const CheckedMesh& mesh, std::vector<Finding>& findings) {
    std::vector<bool> isUsed(mesh.objData.vertexData.vertices.size());
    for (const detail::ObjFace& face : mesh.objData.faces)
        for (const detail::ObjCorner& corner : face)
            if (static_cast<std::size_t>(corner.vertex) < isUsed.size())
                isUsed[static_cast<std::size_t>(corner.vertex)] = true;
    const auto first = std::find(isUsed.begin(), isUsed.end(), false);
    if (first == isUsed.end()) return;
    const auto count = static_cast<std::uint64_t>(std::count(first, isUsed.end(), false));
    findings.push_back({.name = "unused-vertex",
                        .severity = Severity::Note,
                        .count = count,
                        .text = counted(count, "position") + " that no face uses, the first being vertex " +
                                std::to_string(first - isUsed.begin() + 1),
                        .hint = "they have no effect"});
}

}  // namespace quarn
