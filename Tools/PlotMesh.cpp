#include "PlotMesh.h"

#include <algorithm>

#include "Finite.h"
#include "PlotPage.h"
#include "PlotPanel.h"
#include "PlotStyle.h"
#include "PlotText.h"

namespace quarn {

namespace {

constexpr double kPanelMargin = 44.0;
constexpr double kBaseline = 34.0;
constexpr double kIndent = 4.0;
constexpr int kDensity = 9;  // lines of the grid at each eighth of u and v

struct Polyline {
    const char* styleClass;
    std::vector<Point<double, 3>> points;
};

// The lines of a mesh, moved and scaled so that the longest side of its bounds is 1.
struct MeshLines {
    Point<double, 3> min;
    Point<double, 3> max;
    std::vector<Polyline> lines;
    std::vector<Point<double, 2>> outlineUV;

    [[nodiscard]] Point<double, 3> extent() const { return max - min; }
    [[nodiscard]] double size() const { return std::max({extent()[0], extent()[1], extent()[2]}); }
};

void addLine(MeshLines& mesh, const char* styleClass, const std::vector<Point<double, 3>>& points) {
    if (points.size() < 2 ||
        !std::all_of(points.begin(), points.end(), isFinite<3, std::make_index_sequence<3>>))
        return;
    const Point<double, 3> center = (mesh.min + mesh.max) * 0.5;
    Polyline line{.styleClass = styleClass, .points = {}};
    for (const Point<double, 3>& point : points) line.points.push_back((point - center) / mesh.size());
    mesh.lines.push_back(std::move(line));
}

MeshLines linesOf(const IScreenGeometry& geometry) {
    MeshLines mesh;
    geometry.getBounds(&mesh.min, &mesh.max);
    if (!isFinite(mesh.extent()) || !(mesh.size() > 0.0)) return mesh;
    // The grid begins with the outline.
    IScreenGeometry::Polylines outline;
    geometry.sampleBoundary(outline);
    IScreenGeometry::Polylines grid;
    if (geometry.hasParameterization()) geometry.sampleGrid(grid, kDensity);
    for (std::size_t i = 1; i < grid.size(); ++i) addLine(mesh, kGridClass, grid[i]);
    for (const auto& points : outline) addLine(mesh, kOutlineClass, points);
    if (geometry.hasParameterization()) geometry.sampleBoundaryUV(mesh.outlineUV);
    return mesh;
}

Box inside(const Box& box) {
    return {.corner = box.corner + PagePoint(kPanelMargin, kPanelMargin),
            .width = box.width - 2 * kPanelMargin,
            .height = box.height - 2 * kPanelMargin};
}

void drawView(SvgWriter& svg, const MeshLines& mesh, const Camera& camera, const Box& box) {
    Frame frame;
    for (const Polyline& line : mesh.lines)
        for (const Point<double, 3>& point : line.points) frame.include(camera.project(point));
    const double scale = frame.scaleInto(inside(box));
    for (const Polyline& line : mesh.lines) {
        std::vector<PagePoint> points;
        for (const Point<double, 3>& point : line.points) {
            const ViewPoint seen = (camera.project(point) - frame.middle()) * scale;
            points.push_back(box.middle() + PagePoint(seen[0], -seen[1]));
        }
        svg.line(line.styleClass, points);
    }
}

void drawUV(SvgWriter& svg, const MeshLines& mesh, const Box& box) {
    Frame frame;
    frame.include({0.0, 0.0});
    frame.include({1.0, 1.0});
    for (const auto& uv : mesh.outlineUV)
        if (isFinite(uv)) frame.include(uv);
    const double scale = frame.scaleInto(inside(box));
    const auto placed = [&](const Point<double, 2>& uv) {
        return box.middle() + (uv - frame.middle()) * scale;
    };
    svg.rectangle("square", placed({0.0, 0.0}), scale, scale);
    std::vector<PagePoint> points;
    for (const auto& uv : mesh.outlineUV)
        if (isFinite(uv)) points.push_back(placed(uv));
    if (points.size() > 1) svg.line(kOutlineClass, points);
    svg.text("label", placed({0.0, 0.0}) + PagePoint(0.0, -8.0), "u=0 v=0");
    svg.text("label", placed({1.0, 1.0}) + PagePoint(0.0, 16.0), "u=1 v=1", TextAnchor::End);
    if (mesh.outlineUV.empty())
        svg.text("fact", box.middle(), "the mesh has no UV to map by", TextAnchor::Middle);
}

void drawHeader(SvgWriter& svg, const Screen& screen, const MeshLines& mesh, const std::string& unit) {
    const double right = kPageWidth - kPageMargin - kIndent;
    svg.text("title", {kPageMargin + kIndent, kBaseline}, shortFileName(screen.file));
    svg.text("shape", {right, kBaseline},
             "Mesh of " + std::to_string(screen.mesh->contents.triangles) + " triangles", TextAnchor::End);
    const double scale = mesh.size();
    svg.text("fact", {kPageMargin + kIndent, kBaseline + 26.0},
             positionText(mesh.min, scale) + " to " + positionText(mesh.max, scale) + " " + unit);
    svg.text("fact", {right, kBaseline + 26.0}, "digest " + shortDigest(*screen.geometry), TextAnchor::End);
}

}  // namespace

std::string plotMeshPage(const Screen& screen, const std::string& unit) {
    const MeshLines mesh = linesOf(*screen.geometry);
    SvgWriter svg(kPageWidth, kPageHeight, shortFileName(screen.file) + ": Mesh", plotStyleSheet());
    svg.rectangle("page", {0.0, 0.0}, kPageWidth, kPageHeight);
    drawHeader(svg, screen, mesh, unit);
    drawPanelFrame(svg, panelBox(0, 0), "Perspective");
    drawPanelFrame(svg, panelBox(1, 0), "Plan (from above)");
    drawPanelFrame(svg, panelBox(1, 1), "Front (from the viewer)");
    drawPanelFrame(svg, panelBox(0, 1), "UV layout");
    if (mesh.lines.empty()) {
        for (const Box& box : {panelBox(0, 0), panelBox(1, 0), panelBox(1, 1)})
            svg.text("fact", box.middle(), "not drawable: the mesh has no outline", TextAnchor::Middle);
    } else {
        drawView(svg, mesh, Camera::perspective(0.0), panelBox(0, 0));
        drawView(svg, mesh, Camera::plan(), panelBox(1, 0));
        drawView(svg, mesh, Camera::front(), panelBox(1, 1));
    }
    drawUV(svg, mesh, panelBox(0, 1));
    return svg.finish();
}

}  // namespace quarn
