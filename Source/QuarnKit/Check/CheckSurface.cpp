#include "CheckSurface.h"

namespace quarn {

void checkSurface(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings) {
    addProblem(findings, "flipped-triangle", Cases(mesh, surface.isFlipped),
               "with the opposite winding of most of their component",
               "make the normals consistent, so that all triangles have the same winding");
    const Cases nonOrientable(mesh, surface.nonOrientable);
    if (nonOrientable.count() > 0)
        findings.push_back({.name = "non-orientable-surface",
                            .count = nonOrientable.count(),
                            .places = nonOrientable.first(),
                            .text = counted(nonOrientable.count(), "edge") +
                                    " without a consistent winding: the surface is non-orientable",
                            .hint = "cut the twisted band"});
    const Cases nonManifold(mesh, surface.nonManifold);
    if (nonManifold.count() > 0)
        findings.push_back({.name = "non-manifold-edge",
                            .count = nonManifold.count(),
                            .places = nonManifold.first(),
                            .text = counted(nonManifold.count(), "non-manifold edge") +
                                    ", shared by more than two triangles",
                            .hint = "delete inner walls and duplicate faces; a screen is a single layer"});
    const std::size_t components = surface.components.size();
    if (components > 1)
        findings.push_back(
            {.name = "disconnected-components",
             .count = components,
             .places = Cases(mesh, std::span(surface.components).subspan(1)).first(),
             .text = counted(components, "component") + " that share no edge",
             .hint = "merge vertices at equal positions, or write each component to its own file"});
}

}  // namespace quarn
