#include "Units.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

#include "NumberText.h"

namespace quarn {

namespace {

struct LengthUnit {
    std::string_view name;
    int size;  // in tenths of a millimeter, of which each unit is a whole number
};

constexpr int kMeter = 10000;  // in the same
constexpr std::array kLengthUnits = {
    LengthUnit{"mm", 10},       LengthUnit{"cm", 100}, LengthUnit{"dm", 1000}, LengthUnit{"m", kMeter},
    LengthUnit{"km", 10000000}, LengthUnit{"in", 254}, LengthUnit{"ft", 3048}, LengthUnit{"yd", 9144}};

constexpr long double kHalfTurn = 180.0L;  // in degrees

const LengthUnit* findUnit(std::string_view name) {
    const auto* const unit = std::find_if(kLengthUnits.begin(), kLengthUnits.end(),
                                          [&](const LengthUnit& known) { return known.name == name; });
    return unit == kLengthUnits.end() ? nullptr : unit;
}

struct NumberWithUnit {
    double number;
    // The same with more digits: 25.4 mm are 1 in, but the double nearest to 25.4 is not 25.4.
    long double preciseNumber;
    std::string_view unit;
};

// Reads the number from a text that parseNumber() accepts.
long double preciseNumberFrom(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    long double number = 0.0L;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::optional<NumberWithUnit> split(std::string_view text) {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    text = trimmed(text);
    const std::size_t numberLength = text.find_last_not_of(kLetters) + 1;
    const std::string_view numberPart = text.substr(0, numberLength);
    const auto number = parseNumber(numberPart);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    return NumberWithUnit{*number, preciseNumberFrom(numberPart), text.substr(numberLength)};
}

}  // namespace

std::optional<Angle> Angle::parse(std::string_view text) {
    const auto parts = split(text);
    if (parts && parts->unit == "deg") return Angle(parts->preciseNumber, Unit::Degree);
    if (parts && parts->unit == "rad") return Angle(parts->number, Unit::Radian);
    return std::nullopt;
}

double Angle::radians() const {
    if (unit == Unit::Radian) return static_cast<double>(value);
    return static_cast<double>(value * std::numbers::pi_v<long double> / kHalfTurn);
}

double Angle::inDegrees() const {
    if (unit == Unit::Degree) return static_cast<double>(value);
    return static_cast<double>(value / std::numbers::pi_v<long double> * kHalfTurn);
}

Angle Angle::complement() const {
    constexpr long double kQuarterTurn = 90.0L;
    // The quarter turn in radians is the double, so that subtracting half of the double pi leaves
    // 0.
    return {(unit == Unit::Degree ? kQuarterTurn : std::numbers::pi / 2.0) - value, unit};
}

const std::vector<std::string>& lengthUnitNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> result;
        result.reserve(kLengthUnits.size());
        for (const LengthUnit& unit : kLengthUnits) result.emplace_back(unit.name);
        return result;
    }();
    return names;
}

std::optional<double> metersPerUnit(std::string_view unit) {
    const LengthUnit* const known = findUnit(unit);
    if (known == nullptr) return std::nullopt;
    return static_cast<double>(known->size) / kMeter;
}

std::optional<double> parseLength(std::string_view text, std::string_view unit) {
    const auto parts = split(text);
    if (!parts) return std::nullopt;
    if (parts->unit.empty()) return parts->number;
    const LengthUnit* const from = findUnit(parts->unit);
    const LengthUnit* const to = findUnit(unit);
    if (from == nullptr || to == nullptr) return std::nullopt;
    return static_cast<double>(parts->preciseNumber * from->size / to->size);
}

}  // namespace quarn
