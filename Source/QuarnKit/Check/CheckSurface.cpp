#include "CheckSurface.h"

namespace quarn {

void checkSurface(const CheckedMesh& mesh, const MeshTopology& surface, std::vector<Finding>& findings) {
    addProblem(findings, "flipped-triangle", Cases(mesh, surface.isFlipped),
               "wound against most of their piece",
               "make the normals consistent, so that all corners run the same way round");
    const Cases nonOrientable(mesh, surface.nonOrientable);
    if (nonOrientable.count() > 0)
        findings.push_back({.name = "one-sided-surface",
                            .count = nonOrientable.count(),
                            .places = nonOrientable.first(),
                            .text = counted(nonOrientable.count(), "edge") +
                                    " over which no winding fits: the surface has one side only",
                            .hint = "cut the band that is twisted"});
    const Cases nonManifold(mesh, surface.nonManifold);
    if (nonManifold.count() > 0)
        findings.push_back({.name = "crowded-edge",
                            .count = nonManifold.count(),
                            .places = nonManifold.first(),
                            .text = counted(nonManifold.count(), "edge") + " of more than two triangles",
                            .hint = "delete inner walls and doubled faces; a screen is one sheet"});
    const std::size_t pieces = surface.components.size();
    if (pieces > 1)
        findings.push_back({.name = "pieces",
                            .count = pieces,
                            .places = Cases(mesh, std::span(surface.components).subspan(1)).first(),
                            .text = counted(pieces, "piece") + " that share no edge",
                            .hint = "merge corners that lie at one place, or make a file of each piece"});
}

}  // namespace quarn
