/// \file
/// Constants of angles, and numbers of samples along arcs.
#pragma once

#include <limits>

namespace quarn::detail {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;
// Not 180 / pi to full precision: the numbers of boundary samples depend on these digits.
inline constexpr double kSamplingDegreesPerRadian = 57.2957795131;

/// Truncates a number of samples to an integer. 0 for NaN and for numbers beyond the range of int.
[[nodiscard]] constexpr int truncatedCount(double count) {
    const bool isInt =
        count > std::numeric_limits<int>::min() - 1.0 && count < std::numeric_limits<int>::max() + 1.0;
    return isInt ? static_cast<int>(count) : 0;
}

}  // namespace quarn::detail
