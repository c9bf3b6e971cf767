/// \file
/// Lengths, angles and positions from the texts of options.
#pragma once

#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/Units.h>
#include <QuarnScreen/Point.h>

namespace quarn::tool {

/// The error of an option with such a text.
[[nodiscard]] Error unexpectedText(const std::string& option, const std::string& text,
                                   const std::string& expected);

/// A length in \p unit; see parseLength(). Stops where the text is none, as all of these do.
[[nodiscard]] double lengthFrom(const std::string& option, const std::string& text, const std::string& unit);

/// An angle with its unit.
[[nodiscard]] Angle angleFrom(const std::string& option, const std::string& text);

/// Three lengths with commas between them.
[[nodiscard]] Point<double, 3> positionFrom(const std::string& option, const std::string& text,
                                            const std::string& unit);

/// Three angles in degrees with commas between them; a number alone is in degrees.
[[nodiscard]] Point<double, 3> degreesFrom(const std::string& option, const std::string& text);

}  // namespace quarn::tool
