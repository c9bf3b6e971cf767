/// \file
/// Random numbers for tests, seeded by the index of the case.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>

#include <QuarnScreen/Point.h>

namespace quarn::test {

/// How many random cases a test of \p count runs: all of them, or the part of them that the
/// environment variable QUARN_TEST_SEEDS states as a divisor. The sanitizers' presets set it to 4.
inline int seedCount(int count) {
    static const int divisor = [] {
        const char* text = std::getenv("QUARN_TEST_SEEDS");
        return text == nullptr ? 1 : std::max(1, std::atoi(text));
    }();
    return std::max(1, count / divisor);
}

/// Generator of one random case. The same index gives the same numbers on every machine.
class Rng {
public:
    explicit Rng(int index) : engine(static_cast<std::uint64_t>(index) * 0x9E3779B97F4A7C15U + 1U) {}

    /// Uniform over all 64-bit patterns.
    std::uint64_t bits() { return engine(); }
    /// Uniform in [low, high).
    double uniform(double low, double high) {
        constexpr double kUnit = 1.0 / 9007199254740992.0;  // 2^-53
        return low + (high - low) * (static_cast<double>(bits() >> 11U) * kUnit);
    }
    /// Uniform in low..high, both included.
    int integer(int low, int high) {
        const auto range = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low + 1);
        return static_cast<int>(low + static_cast<std::int64_t>(bits() % range));
    }
    bool coin() { return (bits() >> 63U) != 0; }
    /// A number of either sign whose exponent is uniform from 2^lowExponent to 2^highExponent.
    double spread(int lowExponent = -1022, int highExponent = 1023) {
        return std::ldexp(uniform(1.0, 2.0) * (coin() ? 1.0 : -1.0), integer(lowExponent, highExponent));
    }
    Point<double, 3> point(double low, double high) {
        const double x = uniform(low, high);
        const double y = uniform(low, high);
        return {x, y, uniform(low, high)};
    }
    /// A position of whole numbers in low..high, both included.
    Point<double, 3> integerPoint(int low, int high) {
        const double x = integer(low, high);
        const double y = integer(low, high);
        return {x, y, static_cast<double>(integer(low, high))};
    }
    /// A position whose coordinates have exponents uniform from 2^lowExponent to 2^highExponent.
    Point<double, 3> spreadPoint(int lowExponent = -1022, int highExponent = 1023) {
        const double x = spread(lowExponent, highExponent);
        const double y = spread(lowExponent, highExponent);
        return {x, y, spread(lowExponent, highExponent)};
    }

private:
    std::mt19937_64 engine;
};

}  // namespace quarn::test
