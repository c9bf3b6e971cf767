/// \file
/// What the numbers of a screen have to be, whether they are read or made.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>

#include "ScreenTags.h"

namespace quarn {

/// What should stand in the place of \p number, where a number of that kind may not be it. The numbers of a
/// position are looked at one by one.
[[nodiscard]] std::optional<std::string> expectedInsteadOf(double number, ParameterKind kind);

/// Warns of a length of 0.
/// \param file, line place that the message names; none where \p file is empty
void warnIfZero(const Parameter& parameter, const std::string& file, std::uint64_t line, Observer& observer);

/// Stops where angles that are right one by one make no usable screen together, and warns where they make one
/// without UV.
/// \param file, line as for warnIfZero()
void checkRanges(const ScreenType& type, const std::vector<Parameter>& parameters, const std::string& file,
                 std::uint64_t line, Observer& observer);

}  // namespace quarn
