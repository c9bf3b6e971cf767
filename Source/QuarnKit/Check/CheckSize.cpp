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

void checkRounding(const CheckedMesh& mesh, const std::string& unit, std::vector<Finding>& findings) {
    if (mesh.triangles.empty()) return;
    const CoordinateRounding rounding = roundingOf(boundsOf(mesh.triangles));
    if (!rounding.isLarge()) return;
    // The numbers of an STL file are rounded in the file.
    const bool canMove = mesh.canHaveUV && !mesh.file.empty();
    findings.push_back(
        {.name = "rounded-positions",
         .count = mesh.triangles.size(),
         .text = roundingText(rounding, unit),
         .hint = mesh.canHaveUV ? "move the origin to the mesh"
                                : "move the origin to the mesh, and export it again",
         .remedy = {.kind = canMove ? RemedyKind::MoveOrigin : RemedyKind::None, .file = mesh.file}});
}

}  // namespace quarn
