#include "Check/CheckSurface.h"

#include <array>
#include <limits>
#include <string>

#include "Check/Edges.h"
#include "Check/Groups.h"

namespace quarn {

namespace {

// Triangles on a side of a sheet that fewer have. Where both have as many, the sheet's first triangle is right.
std::vector<bool> flippedIn(const std::vector<std::uint32_t>& sheets, const std::vector<bool>& sides,
                            const std::vector<bool>& isUsed) {
    constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::array<std::uint32_t, 2>> counts(sheets.size());
    std::vector<std::uint32_t> firsts(sheets.size(), kNone);
    for (std::uint32_t i = 0; i < sheets.size(); ++i) {
        if (!isUsed[i]) continue;
        ++counts[sheets[i]][sides[i] ? 1 : 0];
        if (firsts[sheets[i]] == kNone) firsts[sheets[i]] = i;
    }
    std::vector<bool> isFlipped(sheets.size());
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (!isUsed[i]) continue;
        const auto [even, odd] = counts[sheets[i]];
        const bool rightSide = even == odd ? sides[firsts[sheets[i]]] : odd > even;
        isFlipped[i] = sides[i] != rightSide;
    }
    return isFlipped;
}

// Adds a case for each piece but the first, where it begins, and returns the number of pieces.
std::uint64_t countPieces(Groups& groups, const std::vector<bool>& isUsed, Cases& further) {
    std::vector<bool> isKnown(isUsed.size());
    std::uint64_t pieces = 0;
    for (std::uint32_t i = 0; i < isUsed.size(); ++i) {
        if (!isUsed[i] || isKnown[groups.groupOf(i)]) continue;
        isKnown[groups.groupOf(i)] = true;
        if (++pieces > 1) further.add(i);
    }
    return pieces;
}

}  // namespace

Surface checkSurface(const CheckedMesh& mesh, const CornerNumbers& corners,
                     const std::vector<bool>& isDuplicate, std::vector<Finding>& findings) {
    const std::size_t count = corners.size();
    Surface surface{.isUsed = std::vector<bool>(count), .sheets = std::vector<std::uint32_t>(count)};
    for (std::size_t i = 0; i < count; ++i)
        surface.isUsed[i] = !isDuplicate[i] && !hasRepeatedCorner(corners[i]);

    Groups sheets(count);
    Groups pieces(count);
    Cases crowded(mesh);
    Cases oneSided(mesh);
    Edges(corners, surface.isUsed).forEach([&](std::span<const EdgeUse> uses) {
        for (const EdgeUse& use : uses.subspan(1)) (void)pieces.join(uses.front().triangle, use.triangle);
        if (uses.size() > 2) crowded.add(uses[2].triangle);
        if (uses.size() == 2 &&
            !sheets.join(uses[0].triangle, uses[1].triangle, uses[0].isForward == uses[1].isForward))
            oneSided.add(uses[1].triangle);
    });

    std::vector<bool> sides(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        surface.sheets[i] = sheets.groupOf(i);
        sides[i] = sheets.sideOf(i);
    }
    surface.isFlipped = flippedIn(surface.sheets, sides, surface.isUsed);
    Cases flipped(mesh);
    for (std::size_t i = 0; i < count; ++i)
        if (surface.isFlipped[i]) flipped.add(i);
    addProblem(findings, "flipped-triangle", flipped, "wound against most of their piece",
               "make the normals consistent, so that all corners run the same way round");
    if (oneSided.count() > 0)
        findings.push_back({.name = "one-sided-surface",
                            .count = oneSided.count(),
                            .places = oneSided.first(),
                            .text = counted(oneSided.count(), "edge") +
                                    " over which no winding fits: the surface has one side only",
                            .hint = "cut the band that is twisted"});
    if (crowded.count() > 0)
        findings.push_back({.name = "crowded-edge",
                            .count = crowded.count(),
                            .places = crowded.first(),
                            .text = counted(crowded.count(), "edge") + " of more than two triangles",
                            .hint = "delete inner walls and doubled faces; a screen is one sheet"});
    Cases further(mesh);
    surface.pieces = countPieces(pieces, surface.isUsed, further);
    if (surface.pieces > 1)
        findings.push_back({.name = "pieces",
                            .count = surface.pieces,
                            .places = further.first(),
                            .text = counted(surface.pieces, "piece") + " that share no edge",
                            .hint = "merge corners that lie at one place, or make a file of each piece"});
    return surface;
}

}  // namespace quarn
