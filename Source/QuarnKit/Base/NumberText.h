/// \file
/// Numbers as text, the same whatever the locale.
#pragma once

#include <cstdint>
#include <numbers>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quarn {

/// The shortest decimal text that reads back as the same bits; "nan", "inf" and "-inf" where it is not
/// finite.
[[nodiscard]] std::string numberText(double value);

/// Appends numberText() of \p value.
void appendNumber(std::string& text, double value);

/// Decimal text with at most \p digits significant digits, for people.
[[nodiscard]] std::string roundedNumberText(double value, int digits);

/// A count for people, with a comma before each group of three digits.
[[nodiscard]] std::string groupedCount(std::uint64_t count);

/// Degrees in a radian.
inline constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;

/// Bytes as hexadecimal text, two digits each.
[[nodiscard]] std::string hexText(std::span<const unsigned char> bytes);

/// The number that is the whole of \p text; blanks around it, a leading plus, "nan" and "inf" are accepted.
///
/// A number too small for a double is 0 or a subnormal number; one too large is no number.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text);

/// The text without blanks, tabs and line ends at both of its ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

}  // namespace quarn
