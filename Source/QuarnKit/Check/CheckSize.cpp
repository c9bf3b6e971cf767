#include "CheckSize.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <string_view>

#include <QuarnKit/Base/NumberText.h>

namespace quarn {

namespace {

constexpr int kSizeDigits = 4;

struct LengthUnit {
    std::string_view name;
    double meters;
};

constexpr std::array kUnits = {LengthUnit{"mm", 0.001},  LengthUnit{"cm", 0.01},   LengthUnit{"dm", 0.1},
                               LengthUnit{"m", 1.0},     LengthUnit{"km", 1000.0}, LengthUnit{"in", 0.0254},
                               LengthUnit{"ft", 0.3048}, LengthUnit{"yd", 0.9144}};

double metersOf(const std::string& unit) {
    const auto* const match = std::find_if(kUnits.begin(), kUnits.end(),
                                           [&](const LengthUnit& known) { return known.name == unit; });
    return match == kUnits.end() ? 1.0 : match->meters;
}

double diagonalOf(const std::vector<Triangle>& triangles) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Point<double, 3> min(kInfinity, kInfinity, kInfinity);
    Point<double, 3> max(-kInfinity, -kInfinity, -kInfinity);
    for (const Triangle& triangle : triangles)
        for (const TriangleVertex& corner : triangle.vertices)
            for (std::size_t i = 0; i < 3; ++i) {
                min[i] = std::min(min[i], corner.position[i]);
                max[i] = std::max(max[i], corner.position[i]);
            }
    return length(max - min);
}

// The factor that people forget and that makes a screen of the size, in meters.
std::optional<std::string> likelyScale(double meters) {
    constexpr double kMinLikelySize = 0.5;
    constexpr double kMaxLikelySize = 100.0;
    constexpr std::array kFactors = {0.001, 1000.0, 0.01, 100.0, 0.0254};
    for (const double factor : kFactors)
        if (meters * factor >= kMinLikelySize && meters * factor <= kMaxLikelySize) return numberText(factor);
    return std::nullopt;
}

}  // namespace

void checkSize(const CheckedMesh& mesh, const std::string& unit, std::vector<Finding>& findings) {
    constexpr double kMinMeters = 0.01;
    constexpr double kMaxMeters = 1000.0;
    if (mesh.triangles.empty()) return;
    const double diagonal = diagonalOf(mesh.triangles);
    const double meters = diagonal * metersOf(unit);
    if (meters >= kMinMeters && meters <= kMaxMeters) return;
    const auto scale = likelyScale(meters);
    findings.push_back({.name = "implausible-size",
                        .count = 1,
                        .text = "the mesh is " + roundedNumberText(diagonal, kSizeDigits) + " " + unit +
                                " across, which is too " + (meters < kMinMeters ? "small" : "large") +
                                " for a screen",
                        .hint = (scale ? "perhaps a scale of " + *scale : std::string("check the scale")) +
                                ", or state the unit of the file"});
}

}  // namespace quarn
