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
    double metres;
};

constexpr std::array kUnits = {LengthUnit{"mm", 0.001},  LengthUnit{"cm", 0.01},   LengthUnit{"dm", 0.1},
                               LengthUnit{"m", 1.0},     LengthUnit{"km", 1000.0}, LengthUnit{"in", 0.0254},
                               LengthUnit{"ft", 0.3048}, LengthUnit{"yd", 0.9144}};

double metresOf(const std::string& unit) {
    const auto* const found = std::find_if(kUnits.begin(), kUnits.end(),
                                           [&](const LengthUnit& known) { return known.name == unit; });
    return found == kUnits.end() ? 1.0 : found->metres;
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

// The factor that people forget and that makes a screen of the size, in metres.
std::optional<std::string> likelyScale(double metres) {
    constexpr double kLikelyLeast = 0.5;
    constexpr double kLikelyMost = 100.0;
    constexpr std::array kFactors = {0.001, 1000.0, 0.01, 100.0, 0.0254};
    for (const double factor : kFactors)
        if (metres * factor >= kLikelyLeast && metres * factor <= kLikelyMost) return numberText(factor);
    return std::nullopt;
}

}  // namespace

void checkSize(const CheckedMesh& mesh, const std::string& unit, std::vector<Finding>& findings) {
    constexpr double kLeastMetres = 0.01;
    constexpr double kMostMetres = 1000.0;
    if (mesh.triangles.empty()) return;
    const double diagonal = diagonalOf(mesh.triangles);
    const double metres = diagonal * metresOf(unit);
    if (metres >= kLeastMetres && metres <= kMostMetres) return;
    const auto scale = likelyScale(metres);
    findings.push_back({.name = "implausible-size",
                        .count = 1,
                        .text = "the mesh is " + roundedNumberText(diagonal, kSizeDigits) + " " + unit +
                                " across, which is too " + (metres < kLeastMetres ? "small" : "large") +
                                " for a screen",
                        .hint = (scale ? "perhaps --scale " + *scale + ", or" : "see to --scale, or") +
                                " name the file's unit with --unit"});
}

}  // namespace quarn
