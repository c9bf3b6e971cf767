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

template <std::size_t N>
::testing::AssertionResult sameBits(const Point<double, N>& a, const Point<double, N>& b) {
    for (std::size_t i = 0; i < N; ++i)
        if (auto result = sameBits(a[i], b[i]); !result) return result << " at coordinate " << i;
    return ::testing::AssertionSuccess();
}

}  // namespace quarn::test
