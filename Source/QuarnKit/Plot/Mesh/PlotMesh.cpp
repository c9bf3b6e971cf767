#include "PlotMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include <QuarnKit/Plot/Page/PlotLegend.h>
#include <QuarnKit/Plot/Page/PlotSheet.h>
#include <QuarnKit/Plot/Page/PlotStyle.h>
#include <QuarnKit/Plot/Page/PlotText.h>

#include "PlotMeshData.h"
#include "PlotMeshEye.h"
#include "PlotMeshUv.h"
#include "PlotMeshViews.h"

namespace quarn {

namespace {

// Maximum distance of a UV from a corner of the unit square that gets a label.
constexpr double kCornerTolerance = 1e-6;

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
    PlotScene scene{.view =
                        [&mesh, stretch](const Camera& camera, const std::optional<Point<double, 3>>& eye) {
                            return meshView(mesh, camera, eye, stretch);
                        },
                    .corners = cornersOf(mesh)};
    addEye(scene, geometry, mesh.toScene(geometry.getEyepoint()));
    scene.eyeView = eyeViewOf(geometry, mesh);
    return scene;
}

std::string overlapText(const PlotMeshData& mesh) {
    return "overlap: " + std::to_string(mesh.counts.overlapping) +
           (mesh.overlaps.isComplete ? "" : " or more");
}

std::size_t badUvCount(const PlotMeshData& mesh) {
    return static_cast<std::size_t>(std::count_if(mesh.marks.begin(), mesh.marks.end(),
                                                  [](const TriangleMark& mark) { return mark.hasBadUV(); }));
}

void addDefects(Legend& legend, const PlotMeshData& mesh) {
    const MeshCounts& counts = mesh.counts;
    if (counts.flipped > 0) legend.addArea(kFlippedClass, "flipped: " + std::to_string(counts.flipped));
    if (const std::size_t bad = badUvCount(mesh); bad > 0) {
        legend.begin(1 + (counts.mirrored > 0 ? 1 : 0) + (counts.outside > 0 ? 1 : 0));
        legend.addArea(kBadUvClass, "bad UV: " + std::to_string(bad));
        if (counts.mirrored > 0) legend.addText(std::to_string(counts.mirrored) + " locally mirrored");
        if (counts.outside > 0) legend.addText(std::to_string(counts.outside) + " outside of 0 to 1");
    }
    if (counts.overlapping > 0 || !mesh.overlaps.isComplete) {
        legend.begin(mesh.overlaps.isComplete ? 1 : 2);
        legend.addArea(kOverlapClass, overlapText(mesh));
        if (!mesh.overlaps.isComplete) legend.addText("too many to compare all");
    }
}

void addBoundary(Legend& legend, const PlotMeshData& mesh) {
    const std::size_t count = mesh.boundaries.size();
    if (count == 0) return;
    if (count <= kMaxThickBoundaries)
        legend.addLine(kBoundaryClass, legend.hasClass(std::string(kBoundaryClass) + kHiddenSuffix)
                                           ? "boundary; pale: hidden"
                                           : "boundary");
    else
        legend.addLine(kThinClass,
                       std::to_string(count) + " boundaries" + (count > kMaxBoundaries ? ": not drawn" : ""));
}

void drawMeshLegend(SvgWriter& svg, const IScreenGeometry& geometry, const PlotMeshData& mesh,
                    const PlotScene& scene, const std::string& unit, const StretchScale* stretch) {
    Legend legend(svg, legendBox());
    if (stretch != nullptr) {
        if (mesh.hasUV()) legend.addStretch(*stretch, mesh.size, unit);
        if (mesh.counts.withoutUV > 0) legend.addArea(kNoStretchClass, "no UV");
    } else {
        if (legend.hasSide(kFrontClass)) legend.addSide(kFrontClass, "front: side of the normals");
        if (legend.hasSide(kBackClass)) legend.addSide(kBackClass, "back");
        addDefects(legend, mesh);
        if (mesh.isMapMirrored) legend.addText("UV: all mirrored, from the front");
    }
    addBoundary(legend, mesh);
    if (mesh.counts.holes > 0) legend.addLine(kHoleClass, "holes: " + std::to_string(mesh.counts.holes));
    if (!mesh.seams.empty()) legend.addLine(kSeamClass, "seam of the UVs");
    if (mesh.hasUV()) legend.addLine(kGridClass, "u and v in steps of 1/8");
    legend.addEye(scene, geometry, mesh.size, unit);
}

// Lists the defects of a mesh in the order of the legend.
std::string defectsText(const PlotMeshData& mesh) {
    const MeshCounts& counts = mesh.counts;
    std::string text;
    const auto add = [&](const std::string& name, std::size_t count) {
        if (count > 0) text += ",  " + name + ": " + std::to_string(count);
    };
    add("holes", counts.holes);
    add("flipped", counts.flipped);
    if (!mesh.hasUV()) return text + ",  no UV";
    add("bad UV", badUvCount(mesh));
    if (counts.overlapping > 0 || !mesh.overlaps.isComplete) text += ",  " + overlapText(mesh);
    add("triangles without UV", counts.withoutUV);
    return text.empty() ? ",  no defects" : text;
}

std::string factsText(const PlotMeshData& mesh) {
    const std::size_t components = mesh.counts.components;
    return (components == 1 ? "one component" : std::to_string(components) + " components") +
           (mesh.boundaries.empty() ? ",  closed: no boundary" : "") + defectsText(mesh);
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
    SvgWriter svg = newSheet(header, styleSheet, meshDefinitions());
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
