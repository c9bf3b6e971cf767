/// \file
/// Sines and cosines over a range of angles. For the sizes of curved screens.
#pragma once

namespace quarn {

/// The smallest and the greatest value of a quantity.
struct ValueRange {
    double min = 0.0;
    double max = 0.0;
};

/// Returns the sine. It is 0 at a multiple of half a turn, also if the angle is rounded to 16
/// digits.
[[nodiscard]] double cleanSine(double angle);

/// Returns the cosine. It is 0 at an odd multiple of a quarter turn, also if the angle is rounded
/// to 16 digits.
[[nodiscard]] double cleanCosine(double angle);

/// Return the range of the sine and of the cosine from one angle to another, in radians. The angles
/// may be in any order and farther apart than a turn.
[[nodiscard]] ValueRange sineRange(double from, double to);
[[nodiscard]] ValueRange cosineRange(double from, double to);

/// Returns the integral of the absolute value of the cosine between two angles in any order. It is
/// not negative.
[[nodiscard]] double absoluteCosineIntegral(double from, double to);

}  // namespace quarn
