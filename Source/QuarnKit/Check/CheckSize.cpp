#include "CheckSize.h"

#include <array>
#include <optional>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/Units.h>
#include <QuarnKit/Formats/Obj/CoordinateRounding.h>
#include <QuarnKit/Measure/PlausibleSize.h>
#include <QuarnKit/Mesh/TriangleCorners.h>

namespace quarn {

namespace {

constexpr int kSizeDigits = 4;

// Returns the usual factor between units that turns a size in meters into that of a screen.
std::optional<std::string> likelyScale(double meters) {
    constexpr std::array kFactors = {0.001, 1000.0, 0.01, 100.0, 0.0254};
    for (const double factor : kFactors)
        if (isUsualSize(meters * factor)) return numberText(factor);
    return std::nullopt;
}

struct FarComponent {
    std::size_t component = 0;  // in the topology
    std::size_t triangles = 0;
    CoordinateRounding rounding;  // its size is that of all components, without the space between
};

// Returns the component with the largest coordinate of a mesh whose bounds are mostly the space
// between components. A small fragment of a large mesh is measured by the size of that mesh.
std::optional<FarComponent> farComponentOf(const CheckedMesh& mesh, const MeshTopology& surface) {
    std::vector<Bounds<3>> bounds(surface.components.size());
    std::vector<std::size_t> counts(bounds.size());
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        if (!surface.isUsed[i]) continue;
        ++counts[surface.componentOf[i]];
        for (const TriangleVertex& corner : mesh.triangles[i].vertices)
            bounds[surface.componentOf[i]].include(corner.position);
    }
    FarComponent far;
    double size = 0.0;
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        const CoordinateRounding rounding = roundingOf(bounds[i]);
        size += rounding.size;
        if (rounding.largest > far.rounding.largest)
            far = {.component = i, .triangles = counts[i], .rounding = rounding};
    }
    far.rounding.size = size;
    if (bounds.size() < 2 || !(size < length(boundsOf(mesh.triangles).extent()))) return std::nullopt;
    return far;
}

}  // namespace

void checkSize(const CheckedMesh& mesh, const std::string& unit, std::vector<Finding>& findings) {
    if (mesh.triangles.empty()) return;
    const double diagonal = length(boundsOf(mesh.triangles).extent());
    const double meters = diagonal * metersPerUnit(unit).value_or(1.0);
    if (isPlausibleSize(meters)) return;
    const auto scale = likelyScale(meters);
    findings.push_back({.name = "implausible-size",
                        .count = 1,
                        .text = "the mesh is " + roundedNumberText(diagonal, kSizeDigits) + " " + unit +
                                " across, which is too " + (meters < 1.0 ? "small" : "large") +
                                " for a screen",
                        .hint = (scale ? "perhaps a scale of " + *scale : std::string("check the scale")) +
                                ", or state the unit of the file"});
}

void checkRounding(const CheckedMesh& mesh, const MeshTopology& surface, const std::string& unit,
                   std::vector<Finding>& findings) {
    if (mesh.triangles.empty()) return;
    const CoordinateRounding whole = roundingOf(boundsOf(mesh.triangles));
    const auto far = whole.isLarge() ? std::nullopt : farComponentOf(mesh, surface);
    const CoordinateRounding rounding = far ? far->rounding : whole;
    if (!rounding.isLarge()) return;
    // The numbers of an STL file are rounded in the file. No one origin suits distant components.
    const bool canMove = mesh.canHaveUV && !mesh.file.empty() && !far;
    Cases cases(mesh);
    if (far) cases.add(surface.components[far->component]);
    findings.push_back(
        {.name = "rounded-positions",
         .count = far ? far->triangles : mesh.triangles.size(),
         .places = cases.first(),
         .text = roundingText(rounding, unit) +
                 (far ? "; they are those of a component of " + counted(far->triangles, "triangle") +
                            " that is far from the origin"
                      : ""),
         .hint = far              ? "write each component to its own file, and move its origin"
                 : mesh.canHaveUV ? "move the origin to the mesh"
                                  : "move the origin to the mesh, and export it again",
         .remedy = {.kind = canMove ? RemedyKind::MoveOrigin : RemedyKind::None, .file = mesh.file}});
}

}  // namespace quarn
