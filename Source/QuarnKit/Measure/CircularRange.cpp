#include "CircularRange.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quarn {

namespace {

constexpr double kQuarterTurn = std::numbers::pi / 2.0;
constexpr double kHalfTurn = std::numbers::pi;
constexpr double kTurn = 2.0 * std::numbers::pi;

// The error of an angle in radians that a file stores with 16 digits, relative to the angle, and
// absolute below one radian.
constexpr double kAngleRounding = 1e-15;

double withoutResidue(double value, double angle) {
    return std::abs(value) <= kAngleRounding * std::max(1.0, std::abs(angle)) ? 0.0 : value;
}

// True if an angle from low to high differs from the target by whole turns.
bool containsAngle(double low, double high, double target) {
    return std::ceil((low - target) / kTurn) <= std::floor((high - target) / kTurn);
}

// Returns the range of a sinusoid, from its values at both ends of the range and the angle of its
// maximum.
ValueRange sinusoidRange(double low, double high, double atLow, double atHigh, double maximum) {
    ValueRange range{.min = std::min(atLow, atHigh), .max = std::max(atLow, atHigh)};
    if (containsAngle(low, high, maximum)) range.max = 1.0;
    if (containsAngle(low, high, maximum + kHalfTurn)) range.min = -1.0;
    return range;
}

// Returns the integral of the absolute value of the cosine from 0 to an angle. Each half turn
// around an extreme of the cosine adds 2; inside of it the integral of the cosine is the sine.
double absoluteCosineIntegralTo(double angle) {
    const double halfTurns = std::floor((angle + kQuarterTurn) / kHalfTurn);
    const bool isNegative = std::fmod(halfTurns, 2.0) != 0.0;
    return 2.0 * halfTurns + (isNegative ? -std::sin(angle) : std::sin(angle));
}

}  // namespace

double cleanSine(double angle) {
    return withoutResidue(std::sin(angle), angle);
}

double cleanCosine(double angle) {
    return withoutResidue(std::cos(angle), angle);
}

ValueRange sineRange(double from, double to) {
    return sinusoidRange(std::min(from, to), std::max(from, to), cleanSine(from), cleanSine(to),
                         kQuarterTurn);
}

ValueRange cosineRange(double from, double to) {
    return sinusoidRange(std::min(from, to), std::max(from, to), cleanCosine(from), cleanCosine(to), 0.0);
}

double absoluteCosineIntegral(double from, double to) {
    return std::abs(absoluteCosineIntegralTo(to) - absoluteCosineIntegralTo(from));
}

}  // namespace quarn
