#include "CommandLine/UnitOptions.h"

#include <array>
#include <cmath>
#include <optional>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn::tool {

namespace {

// The parts between the commas; none unless there are three.
std::optional<std::array<std::string, 3>> threeParts(const std::string& text) {
    std::array<std::string, 3> parts;
    std::string rest = text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::size_t comma = rest.find(',');
        const bool isLast = i + 1 == parts.size();
        if ((comma == std::string::npos) != isLast) return std::nullopt;
        parts.at(i) = rest.substr(0, comma);
        rest = isLast ? "" : rest.substr(comma + 1);
    }
    return parts;
}

// Parses a part of an option's text; the error shows the whole text.
double lengthFrom(const std::string& option, const std::string& text, const std::string& part,
                  const std::string& unit) {
    const auto length = parseLength(part, unit);
    if (!length)
        throw unexpectedText(option, text, "a number in " + unit + ", or a length such as 6m or 236in");
    return *length;
}

}  // namespace

Error unexpectedText(const std::string& option, const std::string& text, const std::string& expected) {
    return Error({.found = "found " + option + " " + quotedExcerpt(text), .expected = expected});
}

double lengthFrom(const std::string& option, const std::string& text, const std::string& unit) {
    return lengthFrom(option, text, text, unit);
}

Angle angleFrom(const std::string& option, const std::string& text) {
    const auto angle = Angle::parse(text);
    if (!angle) throw unexpectedText(option, text, "an angle with its unit, such as 210deg or 3.66rad");
    return *angle;
}

Point<double, 3> positionFrom(const std::string& option, const std::string& text, const std::string& unit) {
    const auto parts = threeParts(text);
    if (!parts) throw unexpectedText(option, text, "three lengths such as 0,1.5m,-2m");
    Point<double, 3> position;
    for (std::size_t i = 0; i < parts->size(); ++i)
        position[i] = lengthFrom(option, text, parts->at(i), unit);
    return position;
}

Point<double, 3> coordinatesFrom(const std::string& option, const std::string& text) {
    // Farther away, doubles are coarser than a tenth of a millimeter in meters.
    constexpr double kMaxOrigin = 1e12;
    const auto parts = threeParts(text);
    Point<double, 3> coordinates;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto number = parts ? parseNumber(parts->at(i)) : std::nullopt;
        if (!number || !(std::abs(*number) <= kMaxOrigin))
            throw unexpectedText(option, text,
                                 "auto, or three numbers up to 1e12 such as 512340,5403210,310");
        coordinates[i] = *number;
    }
    return coordinates;
}

Point<double, 3> degreesFrom(const std::string& option, const std::string& text) {
    const auto parts = threeParts(text);
    const auto unexpected = [&] {
        return unexpectedText(option, text,
                              "three angles in degrees, or with their unit, such as 90,0,-0.5rad");
    };
    if (!parts) throw unexpected();
    Point<double, 3> degrees;
    for (std::size_t i = 0; i < parts->size(); ++i) {
        const auto number = parseNumber(parts->at(i));
        const auto angle = Angle::parse(parts->at(i));
        if (angle)
            degrees[i] = angle->inDegrees();
        else if (number && std::isfinite(*number))
            degrees[i] = *number;
        else
            throw unexpected();
    }
    return degrees;
}

}  // namespace quarn::tool
