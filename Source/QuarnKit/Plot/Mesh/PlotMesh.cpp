#include "PlotMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include <QuarnKit/Plot/Page/PlotLegend.h>
#include <QuarnKit/Plot/Page/PlotSheet.h>
#include <QuarnKit/Plot/Page/PlotStyle.h>
#include <QuarnKit/Plot/Page/PlotText.h>

#include "PlotMeshData.h"
#include "PlotMeshUv.h"
#include "PlotMeshViews.h"

namespace quarn {

namespace {

// Maximum distance of a UV from a corner of the unit square that gets a label.
constexpr double kCornerTolerance = 1e-6;
constexpr double kFirstEntry = 44.0;  // first line of the legend, below the upper edge of the panel

std::vector<SceneCorner> cornersOf(const PlotMeshData& mesh) {
    std::vector<SceneCorner> corners;
    for (const auto& [u, v] :
         std::array{std::pair(0, 0), std::pair(1, 0), std::pair(0, 1), std::pair(1, 1)}) {
        const Point<double, 2> wanted(u, v);
        double best = kCornerTolerance;
        Point<double, 3> position;
        for (std::size_t i = 0; i < mesh.uvs.size(); ++i) {
            for (std::size_t k = 0; k < 3; ++k) {
                const double distance = length(mesh.uvs[i].at(k) - wanted);
                if (!(distance < best)) continue;
                best = distance;
                position = mesh.triangles[i].at(k);
            }
        }
        if (best < kCornerTolerance) corners.push_back({.u = u, .v = v, .position = position});
    }
    return corners;
}

PlotScene sceneOf(const IScreenGeometry& geometry, const PlotMeshData& mesh, const StretchScale* stretch) {
    PlotScene scene{
        .shapes = [&mesh, stretch](const Camera& camera) { return meshShapes(mesh, camera, stretch); },
        .hides =
            [&mesh](const Camera& camera, const Point<double, 3>& position) {
                return PlotRaster(mesh.triangles, camera, kPlotCells).hides(position);
            },
        .corners = cornersOf(mesh)};
    addEye(scene, geometry, mesh.toScene(geometry.getEyepoint()));
    return scene;
}

std::string countText(std::size_t count) {
    return count == 0 ? "none" : std::to_string(count);
}

void addDefects(Legend& legend, const PlotMeshData& mesh) {
    const MeshCounts& counts = mesh.counts;
    legend.addArea(kFlippedClass, "flipped: " + countText(counts.flipped));
    if (!mesh.hasUV()) return;
    const auto bad = static_cast<std::size_t>(std::count_if(
        mesh.marks.begin(), mesh.marks.end(), [](const TriangleMark& mark) { return mark.hasBadUV(); }));
    legend.addArea(kBadUvClass, "bad UV: " + countText(bad));
    if (mesh.isMapMirrored) legend.addText("all mirrored, from the front");
    if (counts.mirrored > 0) legend.addText(std::to_string(counts.mirrored) + " locally mirrored");
    if (counts.outside > 0) legend.addText(std::to_string(counts.outside) + " outside of 0 to 1");
    legend.addArea("overlap", "overlap: " + (mesh.overlaps.isComplete
                                                 ? countText(counts.overlapping)
                                                 : std::to_string(counts.overlapping) + " or more"));
}

void addBoundary(Legend& legend, const PlotMeshData& mesh) {
    const std::size_t count = mesh.boundaries.size();
    if (count == 0)
        legend.addLine(kBoundaryClass, "boundary: none");
    else if (count <= kMaxThickBoundaries)
        legend.addLine(kBoundaryClass, "boundary; pale: hidden");
    else
        legend.addLine(kThinClass,
                       std::to_string(count) + " boundaries" + (count > kMaxBoundaries ? ": not drawn" : ""));
}

void drawMeshLegend(SvgWriter& svg, const IScreenGeometry& geometry, const PlotMeshData& mesh,
                    const PlotScene& scene, const std::string& unit, const StretchScale* stretch) {
    Legend legend(svg, legendBox().corner + PagePoint(0.0, kFirstEntry));
    if (stretch != nullptr) {
        if (mesh.hasUV()) legend.addStretch(*stretch, mesh.size, unit);
        if (mesh.counts.withoutUV > 0) legend.addArea(kNoStretchClass, "no UV");
    } else {
        legend.addSide(kFrontClass, "front: side of the normals");
        legend.addSide(kBackClass, "back");
        addDefects(legend, mesh);
    }
    addBoundary(legend, mesh);
    legend.addLine(kHoleClass, "holes: " + countText(mesh.counts.holes));
    if (!mesh.seams.empty()) legend.addLine(kSeamClass, "seam of the UVs");
    if (mesh.hasUV()) legend.addLine(kGridClass, "u and v in steps of 1/8");
    legend.addEye(scene, geometry, mesh.size, unit);
}

std::string factsText(const PlotMeshData& mesh) {
    const MeshCounts& counts = mesh.counts;
    std::string text =
        counts.components == 1 ? "one component" : std::to_string(counts.components) + " components";
    text += mesh.boundaries.empty() ? ",  closed: no boundary" : "";
    text += ",  holes: " + countText(counts.holes) + ",  flipped: " + countText(counts.flipped);
    if (!mesh.hasUV()) return text + ",  no UV";
    if (counts.withoutUV > 0) text += ",  triangles without UV: " + std::to_string(counts.withoutUV);
    return text;
}

}  // namespace

std::string plotMeshPage(const IScreenGeometry& geometry, const std::string& file, const std::string& unit,
                         PlotColor color) {
    const PlotMeshData mesh = buildPlotMeshData(geometry);
    const StretchScale scale(mesh.patches());
    const StretchScale* stretch = color == PlotColor::Stretch ? &scale : nullptr;
    const std::size_t count = mesh.triangles.size() + mesh.counts.notFinite;
    SheetHeader header{
        .file = shortFileName(file),
        .shape = "Mesh of " + std::to_string(count) + (count == 1 ? " triangle" : " triangles"),
        .size = "no size: no finite positions that differ",
        .digest = shortDigest(geometry),
        .facts = {}};
    if (mesh.isDrawable()) {
        header.size = sizeText(mesh.bounds.min, mesh.bounds.max, unit);
        header.facts = factsText(mesh);
    }
    const std::string styleSheet =
        plotStyleSheet() + meshStyleRules() + (stretch != nullptr ? stretchStyleRules() : "");
    SvgWriter svg = newSheet(header, styleSheet);
    if (!mesh.isDrawable()) {
        drawNoViews(svg, "the mesh has no finite positions that differ");
        return svg.finish();
    }
    const PlotScene scene = sceneOf(geometry, mesh, stretch);
    drawViews(svg, scene, mesh.bounds.extent(), unit);
    drawMeshUv(svg, uvBox(), mesh, stretch);
    drawMeshLegend(svg, geometry, mesh, scene, unit, stretch);
    return svg.finish();
}

}  // namespace quarn
