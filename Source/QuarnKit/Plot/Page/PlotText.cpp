#include "PlotText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn {

namespace {

constexpr int kDigits = 4;
// Range of numbers without an exponent.
constexpr double kMinFixedNotation = 1e-3;
constexpr double kMaxFixedNotation = 1e7;
// Rounds away from a tie, so that the last bits do not decide; far below the last digit shown.
constexpr double kTieNudge = 1.0 + 1e-9;
constexpr double kNegligibleRatio = 1e-9;  // relative to the scale

constexpr std::size_t kMaxNameLength = 48;
constexpr std::size_t kNameEndLength = 16;
constexpr std::size_t kDigestBytes = 6;

std::string formatted(double value, std::chars_format format, int precision) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
    return {buffer.data(), result.ptr};
}

std::string withoutTrailingZeros(std::string text) {
    if (text.find('.') == std::string::npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string parameterText(const Parameter& parameter, const std::string& unit) {
    const std::string& name = parameter.label;
    switch (parameter.kind) {
        case ParameterKind::Angle:
            return name + " " + shortNumber(parameter.value * kDegreesPerRadian, 1.0) + "°";
        case ParameterKind::Position: {
            const auto& p = parameter.position;
            const double scale = std::max({std::abs(p[0]), std::abs(p[1]), std::abs(p[2])});
            return name + " " + positionText(p, scale) + " " + unit;
        }
        case ParameterKind::Length:
            break;
    }
    return name + " " + lengthText(parameter.value, unit);
}

}  // namespace

std::string shortNumber(double value, double scale) {
    if (!std::isfinite(value)) return numberText(value);
    const double magnitude = std::abs(value) * kTieNudge;
    if (magnitude == 0.0 || magnitude < kNegligibleRatio * scale) return "0";
    const std::string sign = value < 0.0 ? "-" : "";
    if (magnitude < kMinFixedNotation || magnitude >= kMaxFixedNotation)
        return sign + formatted(magnitude, std::chars_format::general, kDigits);
    const int whole = static_cast<int>(std::floor(std::log10(magnitude))) + 1;
    return sign +
           withoutTrailingZeros(formatted(magnitude, std::chars_format::fixed, std::max(0, kDigits - whole)));
}

std::string lengthText(double value, const std::string& unit) {
    return shortNumber(value, 0.0) + " " + unit;
}

std::string positionText(const Point<double, 3>& position, double scale) {
    return "(" + shortNumber(position[0], scale) + ", " + shortNumber(position[1], scale) + ", " +
           shortNumber(position[2], scale) + ")";
}

std::string shortFileName(const std::string& path) {
    // Count characters, not bytes, so that no character is cut.
    const std::wstring name = fromUtf8(printable(std::filesystem::path(path).filename().string()));
    if (name.size() <= kMaxNameLength) return toUtf8(name);
    return toUtf8(name.substr(0, kMaxNameLength - kNameEndLength)) + "…" +
           toUtf8(name.substr(name.size() - kNameEndLength));
}

std::string shapeText(const IScreenGeometry& geometry, const PlotSurface& surface) {
    const std::string& type = geometry.getType();
    const bool isClosed = surface.isDrawable() && surface.closesAlongU();
    const bool hasTop = surface.isPoint(PlotSurface::Top);
    const bool hasBottom = surface.isPoint(PlotSurface::Bottom);
    if (type == FlatScreen::type()) return "Flat wall";
    if (type == CylinderScreen::type()) return isClosed ? "Full cylinder" : "Section of a cylinder";
    if (type == RuledSurfaceScreen::type()) return "Ruled surface between two arcs";
    if (type != SphericalScreen::type()) return type;
    if (!isClosed) return "Section of a sphere";
    if (hasTop && hasBottom) return "Full sphere";
    return hasTop ? "Dome, closed around and above" : "Ring of a sphere, closed around";
}

std::string parametersText(const Screen& screen, const std::string& unit) {
    std::string text;
    for (const Parameter& parameter : screen.parameters)
        text += (text.empty() ? "" : ",  ") + parameterText(parameter, unit);
    return text;
}

std::string sizeText(const Point<double, 3>& min, const Point<double, 3>& max, const std::string& unit) {
    const Point<double, 3> extent = max - min;
    const double scale = std::max({extent[0], extent[1], extent[2]});
    std::string size;
    std::string place;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        size += (axis == 0 ? "" : " × ") + shortNumber(extent[axis], scale);
        place += (axis == 0   ? "x "
                  : axis == 1 ? ",  y "
                              : ",  z ") +
                 shortNumber(min[axis], scale) + " to " + shortNumber(max[axis], scale);
    }
    return size + " " + unit + " (width × depth × height):  " + place;
}

std::string shortDigest(const IScreenGeometry& geometry) {
    const auto digest = geometry.getUniqueDataHash();
    return hexText(std::span(digest).first<kDigestBytes>());
}

}  // namespace quarn
