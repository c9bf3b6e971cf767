#include "CheckSurface.h"

namespace quarn {

void checkSurface(const CheckedMesh& mesh, const MeshSurface& surface, std::vector<Finding>& findings) {
    addProblem(findings, "flipped-triangle", Cases(mesh, surface.isTurned),
               "wound against most of their piece",
               "make the normals consistent, so that all corners run the same way round");
    const Cases oneSided(mesh, surface.oneSided);
    if (oneSided.count() > 0)
        findings.push_back({.name = "one-sided-surface",
                            .count = oneSided.count(),
                            .places = oneSided.first(),
                            .text = counted(oneSided.count(), "edge") +
                                    " over which no winding fits: the surface has one side only",
                            .hint = "cut the band that is twisted"});
    const Cases crowded(mesh, surface.crowded);
    if (crowded.count() > 0)
        findings.push_back({.name = "crowded-edge",
                            .count = crowded.count(),
                            .places = crowded.first(),
                            .text = counted(crowded.count(), "edge") + " of more than two triangles",
                            .hint = "delete inner walls and doubled faces; a screen is one sheet"});
    const std::size_t pieces = surface.pieces.size();
    if (pieces > 1)
        findings.push_back({.name = "pieces",
                            .count = pieces,
                            .places = Cases(mesh, std::span(surface.pieces).subspan(1)).first(),
                            .text = counted(pieces, "piece") + " that share no edge",
                            .hint = "merge corners that lie at one place, or make a file of each piece"});
}

}  // namespace quarn
