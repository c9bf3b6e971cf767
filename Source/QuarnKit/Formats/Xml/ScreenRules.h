/// \file
/// Checks the numbers of a screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>

#include "ScreenTags.h"

namespace quarn {

/// Returns the valid range if \p number is out of the range of its kind; otherwise nothing. The
/// numbers of a position are checked one by one.
[[nodiscard]] std::optional<std::string> expectedInsteadOf(double number, ParameterKind kind);

/// True if an arc over a chord has an angle that a ruled screen can have, in radians.
[[nodiscard]] bool isValidArc(double radians);

/// Warns of a length of 0.
/// \param file, line place of the warning; none if \p file is empty
void warnIfZero(const Parameter& parameter, const std::string& file, std::uint64_t line, Observer& observer);

/// Throws an Error if angles that are valid one by one form no usable screen together. Warns if
/// they form a screen without UV, or one on which positions have several UVs.
/// \param file, line as for warnIfZero()
void checkRanges(const ScreenType& type, const std::vector<Parameter>& parameters, const std::string& file,
                 std::uint64_t line, Observer& observer);

}  // namespace quarn
