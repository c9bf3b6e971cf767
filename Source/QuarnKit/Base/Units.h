/// \file
/// Lengths and angles with their units, as people write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quarn {

/// An angle in the unit that it was written in, so that sums with whole parts of a turn stay exact.
class Angle {
public:
    /// From text such as "210deg" or "3.66rad"; nothing where it has another form or no unit.
    [[nodiscard]] static std::optional<Angle> parse(std::string_view text);

    [[nodiscard]] static Angle degrees(long double value) { return {value, Unit::Degree}; }

    /// In radians, rounded once.
    [[nodiscard]] double radians() const;
    /// In degrees, likewise.
    [[nodiscard]] double inDegrees() const;
    [[nodiscard]] Angle negated() const { return {-value, unit}; }
    [[nodiscard]] Angle halved() const { return {value / 2, unit}; }
    /// What is left of a quarter turn.
    [[nodiscard]] Angle complement() const;

private:
    enum class Unit { Degree, Radian };

    Angle(long double number, Unit unitOfNumber) : value(number), unit(unitOfNumber) {}

    long double value;
    Unit unit;
};

/// The length that \p text tells, such as "6m" or "6000mm", in \p unit and rounded once; a number alone is in
/// \p unit. Nothing where it has another form, or where one of the units is not m, cm, mm, ft or in.
[[nodiscard]] std::optional<double> parseLength(std::string_view text, const std::string& unit);

}  // namespace quarn
