#include "ScreenRules.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>

namespace quarn {

namespace {

// A query squares differences of two lengths and adds three squares, which overflows above 1e154.
// The rest is reserve for the positions of queries.
constexpr double kMaxLength = 1e150;

// In radians, about 160 turns. A query of a cylinder iterates over the turns of its limits, and a
// boundary has a position for each two degrees: at this limit a query takes a microsecond and a
// boundary 10 MB. From 1e16 on a query does not terminate, since a turn then changes nothing.
constexpr double kMaxAngle = 1000.0;

// In radians. The search for a ruling halves a range of pi / arc until it is below 1e-6.
// Neighboring numbers of that size are farther apart for arcs below 1.6e-10, and the search does
// not terminate.
constexpr double kMinArc = 1e-9;
// The radius of an arc is half the chord over the sine of half the arc, which is 0 for a full
// circle.
constexpr double kMaxArc = 2.0 * std::numbers::pi - kMinArc;

// In radians. Limits in a file have 16 digits, so that a full turn may be longer by their rounding.
constexpr double kTurnRounding = 1e-12;
constexpr double kMaxTurn = 2.0 * std::numbers::pi + kTurnRounding;
constexpr double kMaxElevation = std::numbers::pi / 2.0 + kTurnRounding;
constexpr int kDegreeDigits = 7;

std::string fromTo(double low, double high) {
    return "a number from " + numberText(low) + " to " + numberText(high);
}

double valueOf(const std::vector<Parameter>& parameters, const std::string& name) {
    return std::find_if(parameters.begin(), parameters.end(),
                        [&](const Parameter& parameter) { return parameter.name == name; })
        ->value;
}

void warnOfNoUV(const std::string& what, const std::string& file, std::uint64_t line, Observer& observer) {
    observer.notify({.level = NoticeLevel::Warning,
                     .text = "the " + what + " is 0: UV cannot be computed",
                     .file = file,
                     .line = line});
}

std::string degreesText(double radians) {
    return roundedNumberText(radians * kDegreesPerRadian, kDegreeDigits) + " degrees";
}

// A section may cover a part of the surface twice, and each query then finds one of the two UVs.
std::optional<std::string> overlapIn(const AngleRange& range, double min, double max) {
    if (std::abs(max - min) > kMaxTurn)
        return "the " + range.label + " is " + degreesText(std::abs(max - min)) +
               ", more than a full turn: the screen overlaps itself, and a position has several UVs";
    const double highest = std::max(std::abs(min), std::abs(max));
    if (range.rule == RangeRule::Elevation && highest > kMaxElevation)
        return "the " + range.label + " reaches " + degreesText(highest) +
               ", beyond a pole at 90 degrees: UV of positions is wrong there";
    return std::nullopt;
}

}  // namespace

bool isValidArc(double radians) {
    return radians >= kMinArc && radians <= kMaxArc;
}

std::optional<std::string> expectedInsteadOf(double number, ParameterKind kind) {
    const double high = kind == ParameterKind::Angle ? kMaxAngle : kMaxLength;
    const double low = kind == ParameterKind::Length ? 0.0 : -high;
    if (number >= low && number <= high) return std::nullopt;
    return fromTo(low, high) + (kind == ParameterKind::Angle ? " (radians)" : "");
}

void warnIfZero(const Parameter& parameter, const std::string& file, std::uint64_t line, Observer& observer) {
    if (parameter.kind == ParameterKind::Length && parameter.value == 0.0)
        warnOfNoUV(parameter.label, file, line, observer);
}

void checkRanges(const ScreenType& type, const std::vector<Parameter>& parameters, const std::string& file,
                 std::uint64_t line, Observer& observer) {
    for (const AngleRange& range : type.ranges) {
        const double min = valueOf(parameters, range.min);
        const double max = valueOf(parameters, range.max);
        const double extent = max - min;
        const bool isArc = range.rule == RangeRule::Arc;
        if (isArc && !isValidArc(extent))
            throw Error({.found = "found a " + range.label + " of " + numberText(extent) + " radians",
                         .expected = fromTo(kMinArc, kMaxArc),
                         .file = file,
                         .line = line});
        if (isArc) continue;
        if (extent == 0.0) warnOfNoUV(range.label, file, line, observer);
        if (const auto overlap = overlapIn(range, min, max))
            observer.notify({.level = NoticeLevel::Warning, .text = *overlap, .file = file, .line = line});
    }
}

}  // namespace quarn
