/// \file
/// Numbers as text, independent of the locale.
#pragma once

#include <cstdint>
#include <numbers>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quarn {

/// Returns the shortest decimal text that parses to the same bits; "nan", "inf" or "-inf" if the
/// number is not finite.
[[nodiscard]] std::string numberText(double value);

/// Appends numberText() of \p value.
void appendNumber(std::string& text, double value);

/// Returns decimal text with at most \p digits significant digits, for people. More than 15 digits
/// are used only if fewer do not parse to the same bits.
/// \param digits from 1 to 17
[[nodiscard]] std::string roundedNumberText(double value, int digits);

/// Returns a count for people, with a comma before each group of three digits.
[[nodiscard]] std::string groupedCount(std::uint64_t count);

/// Degrees in a radian.
inline constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;

/// Returns bytes as hexadecimal text, two digits each.
[[nodiscard]] std::string hexText(std::span<const unsigned char> bytes);

/// Parses \p text as a number. Blanks around it, a leading plus, "nan" and "inf" are accepted.
///
/// A number too small for a normal double becomes 0 or subnormal.
/// \return nothing if the text is no number or too large for a double
[[nodiscard]] std::optional<double> parseNumber(std::string_view text);

/// Returns the text without leading and trailing blanks, tabs and line ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

}  // namespace quarn
