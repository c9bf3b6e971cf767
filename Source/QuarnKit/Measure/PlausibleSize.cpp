#include "PlausibleSize.h"

#include <array>

#include <QuarnKit/Base/Units.h>

namespace quarn {

bool isPlausibleSize(double meters) {
    constexpr double kMinMeters = 0.05;
    constexpr double kMaxMeters = 1000.0;
    return meters >= kMinMeters && meters <= kMaxMeters;
}

bool isUsualSize(double meters) {
    constexpr double kMinUsualMeters = 0.5;
    constexpr double kMaxUsualMeters = 100.0;
    return meters >= kMinUsualMeters && meters <= kMaxUsualMeters;
}

std::optional<std::string> likelyUnitOf(double number) {
    // By frequency in drawings and in files of other programs.
    constexpr std::array kUnits = {"mm", "m", "cm", "in", "ft"};
    for (const char* const unit : kUnits)
        if (isUsualSize(number * metersPerUnit(unit).value_or(0.0))) return unit;
    return std::nullopt;
}

}  // namespace quarn
