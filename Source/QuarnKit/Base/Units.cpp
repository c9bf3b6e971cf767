#include "Units.h"

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

#include "NumberText.h"

namespace quarn {

namespace {

struct LengthUnit {
    std::string_view name;
    int size;  // in tenths of a millimetre, of which each unit is a whole number
};

constexpr std::array kLengthUnits = {LengthUnit{"m", 10000}, LengthUnit{"cm", 100}, LengthUnit{"mm", 10},
                                     LengthUnit{"ft", 3048}, LengthUnit{"in", 254}};

constexpr long double kHalfTurn = 180.0L;  // in degrees

std::optional<int> sizeOf(std::string_view name) {
    for (const LengthUnit& unit : kLengthUnits)
        if (unit.name == name) return unit.size;
    return std::nullopt;
}

struct NumberWithUnit {
    double number;
    // The same with more digits: 25.4 mm are 1 in, but not the double next to 25.4.
    long double preciseNumber;
    std::string_view unit;
};

// The number that is the whole of a text that parseNumber() takes.
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
    // The quarter turn in radians is the double: half of the double pi leaves nothing of it.
    return {(unit == Unit::Degree ? kQuarterTurn : std::numbers::pi / 2.0) - value, unit};
}

std::optional<double> parseLength(std::string_view text, const std::string& unit) {
    const auto parts = split(text);
    if (!parts) return std::nullopt;
    if (parts->unit.empty()) return parts->number;
    const auto from = sizeOf(parts->unit);
    const auto to = sizeOf(unit);
    if (!from || !to) return std::nullopt;
    return static_cast<double>(parts->preciseNumber * *from / *to);
}

}  // namespace quarn
