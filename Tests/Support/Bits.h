/// \file
/// Comparison of numbers bit for bit.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include <QuarnScreen/Point.h>

namespace quarn::test {

/// Whether two numbers have the same bits; all NaN count as the same.
inline ::testing::AssertionResult sameBits(double a, double b) {
    const bool bothNaN = std::isnan(a) && std::isnan(b);
    if (bothNaN || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << std::hexfloat << a << " differs from " << b;
}

inline ::testing::AssertionResult sameBits(float a, float b) {
    const bool bothNaN = std::isnan(a) && std::isnan(b);
    if (bothNaN || std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << std::hexfloat << a << " differs from " << b;
}

// The third parameter is named, since clang cannot deduce it.
template <class T, std::size_t N, class Indices>
::testing::AssertionResult sameBits(const Point<T, N, Indices>& a, const Point<T, N, Indices>& b) {
    for (std::size_t i = 0; i < N; ++i)
        if (auto result = sameBits(a[i], b[i]); !result) return result << " at coordinate " << i;
    return ::testing::AssertionSuccess();
}

}  // namespace quarn::test
