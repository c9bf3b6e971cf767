/// \file
/// Lengths and angles with their units, as people write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

/// An angle in the unit that it was written in, so that sums with fractions of a turn stay exact.
class Angle {
public:
    /// Parses text such as "210deg" or "3.66rad"; nothing if it has another form or no unit.
    [[nodiscard]] static std::optional<Angle> parse(std::string_view text);

    [[nodiscard]] static Angle degrees(long double value) { return {value, Unit::Degree}; }

    /// Returns the angle in radians, rounded once.
    [[nodiscard]] double radians() const;
    /// Returns the angle in degrees, rounded once.
    [[nodiscard]] double inDegrees() const;
    [[nodiscard]] Angle negated() const { return {-value, unit}; }
    [[nodiscard]] Angle halved() const { return {value / 2, unit}; }
    /// Returns a quarter turn minus this angle.
    [[nodiscard]] Angle complement() const;

private:
    enum class Unit { Degree, Radian };

    Angle(long double number, Unit unitOfNumber) : value(number), unit(unitOfNumber) {}

    long double value;
    Unit unit;
};

/// Returns the names of the units of length: mm, cm, dm, m, km, in, ft and yd.
[[nodiscard]] const std::vector<std::string>& lengthUnitNames();

/// Returns the number of meters in a unit of length; nothing if the name is unknown.
[[nodiscard]] std::optional<double> metersPerUnit(std::string_view unit);

/// Parses a length such as "6m" or "6000mm" and returns it in \p unit, rounded once. A number
/// without a unit is in \p unit, which may have any name then.
///
/// Returns nothing if the text has another form, or if one of the units is unknown.
[[nodiscard]] std::optional<double> parseLength(std::string_view text, std::string_view unit);

}  // namespace quarn
