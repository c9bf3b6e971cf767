#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

#include <QuarnKit/Check/MeshCheck.h>
#include <QuarnKit/Plot/Mesh/PlotMeshData.h>
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

namespace quarn::test {
namespace {

void flipWinding(Triangle& triangle) {
    std::swap(triangle.vertices[1], triangle.vertices[2]);
    computeFields(triangle);
}

std::uint64_t countOf(const std::string& name, const std::vector<Finding>& findings) {
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [&](const Finding& finding) { return finding.name == name; });
    return found == findings.end() ? 0 : found->count;
}

MeshCounts expectAgreement(const Mesh& mesh, const std::string& name) {
    SCOPED_TRACE(name);
    const std::vector<Finding> findings = checkMesh({.objData = {}, .triangles = mesh, .lines = {}}, "m");
    const MeshCounts counts = buildPlotMeshData(TriangleScreen(mesh)).counts;
    EXPECT_EQ(counts.holes, countOf("hole", findings));
    EXPECT_EQ(counts.components > 1 ? counts.components : 0, countOf("disconnected-components", findings));
    EXPECT_EQ(counts.flipped, countOf("flipped-triangle", findings));
    EXPECT_EQ(counts.mirrored, countOf("mirrored-uv", findings));
    EXPECT_EQ(counts.overlapping, countOf("overlapping-uv", findings));
    EXPECT_EQ(counts.outside, countOf("uv-outside", findings));
    EXPECT_EQ(counts.withoutUV, countOf("missing-uv", findings));
    return counts;
}

TEST(PlotAndCheck, CountTheSameDefectsOfWholeMeshes) {
    Mesh folded = flatGrid({8, 4});
    foldUV(folded);
    Mesh twisted = wave({12, 9});
    twistUV(twisted);
    Mesh bare = cylinderSection({20, 4}, 5.0, 3.0, 6.283185307179586);
    stripUV(bare);
    const std::vector<std::pair<std::string, Mesh>> meshes = {
        {"sheet", flatGrid({6, 4})},
        {"holes", gridWithHoles({9, 3}, 3)},
        {"seam", gridWithSeam({4, 5})},
        {"components", separatePieces(3, {3, 2})},
        {"dome", dome({16, 4}, kHalfSphere)},
        {"cylinder", cylinderSection({20, 4}, 5.0, 3.0, 6.283185307179586)},
        {"folded", folded},
        {"twisted", twisted},
        {"without UV", bare},
        {"layers", foldedSheet(4, 0.2, 5)}};
    for (const auto& [name, mesh] : meshes) (void)expectAgreement(mesh, name);
}

// Cells are removed; triangles are flipped, duplicated, moved in UV, mirrored, detached or without
// UV.
TEST(PlotAndCheck, CountTheSameDefectsOfDamagedMeshes) {
    MeshCounts sums;
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        Mesh mesh = rng.coin() ? separatePieces(2, {6, 5}) : dome({10, 8}, kHalfSphere);
        for (int damages = rng.integer(0, 12); damages > 0; --damages) {
            const auto place = static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1));
            Triangle& triangle = mesh[place];
            TriangleVertex& corner = triangle.vertices[static_cast<std::size_t>(rng.integer(0, 2))];
            switch (rng.integer(0, 6)) {
                case 0:
                    mesh.erase(mesh.begin() + static_cast<std::ptrdiff_t>(place));
                    continue;
                case 1:
                    flipWinding(triangle);
                    break;
                case 2:
                    mesh.push_back(Triangle(triangle));
                    continue;
                case 3:
                    corner.uv = {rng.uniform(-0.2, 1.2), rng.uniform(-0.2, 1.2)};
                    break;
                case 4:
                    std::swap(triangle.vertices[0].uv, triangle.vertices[1].uv);
                    break;
                case 5:
                    corner.position[2] += 0.01;
                    break;
                default:
                    if (i % 4 == 0) corner.uv = kNoUV;
            }
            computeFields(triangle);
        }
        const MeshCounts counts = expectAgreement(mesh, std::to_string(i));
        sums.holes += counts.holes;
        sums.flipped += counts.flipped;
        sums.mirrored += counts.mirrored;
        sums.overlapping += counts.overlapping;
    }
    EXPECT_GT(sums.holes, static_cast<std::size_t>(seedCount(100)));
    EXPECT_GT(sums.flipped, static_cast<std::size_t>(seedCount(100)));
    EXPECT_GT(sums.mirrored, static_cast<std::size_t>(seedCount(100)));
    EXPECT_GT(sums.overlapping, 100U);
}

}  // namespace
}  // namespace quarn::test
