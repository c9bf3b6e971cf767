/// \file
/// Lengths, angles and positions from the texts of options. Each parser throws an Error that names
/// the option if its text is not valid.
#pragma once

#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/Units.h>
#include <QuarnScreen/Point.h>

namespace quarn::tool {

/// Returns the error for an option with an invalid text.
[[nodiscard]] Error unexpectedText(const std::string& option, const std::string& text,
                                   const std::string& expected);

/// Parses a length, converted to \p unit; see parseLength().
[[nodiscard]] double lengthFrom(const std::string& option, const std::string& text, const std::string& unit);

/// Parses an angle with its unit.
[[nodiscard]] Angle angleFrom(const std::string& option, const std::string& text);

/// Parses three lengths, separated by commas.
[[nodiscard]] Point<double, 3> positionFrom(const std::string& option, const std::string& text,
                                            const std::string& unit);

/// Parses three finite numbers, separated by commas.
[[nodiscard]] Point<double, 3> coordinatesFrom(const std::string& option, const std::string& text);

/// Parses three angles, separated by commas. Returns degrees; a number without unit is in degrees.
[[nodiscard]] Point<double, 3> degreesFrom(const std::string& option, const std::string& text);

}  // namespace quarn::tool
