/// \file
/// Constants of angles and counts of samples along them.
#pragma once

#include <limits>

namespace quarn::detail {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;
// Not 180 / pi to the last digit: the counts of boundary samples depend on these digits.
inline constexpr double kSamplingDegreesPerRadian = 57.2957795131;

/// A count of samples cut to a whole number. A NaN, or a count that no list could hold, gives none.
[[nodiscard]] constexpr int truncatedCount(double count) {
    const bool isInt =
        count > std::numeric_limits<int>::min() - 1.0 && count < std::numeric_limits<int>::max() + 1.0;
    return isInt ? static_cast<int>(count) : 0;
}

}  // namespace quarn::detail
