/// \file
/// Test for positions and UV pairs that are finite.
#pragma once

#include <cmath>
#include <cstddef>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Returns true if no coordinate is NaN or infinite.
template <std::size_t N, class Indices>
[[nodiscard]] bool isFinite(const Point<double, N, Indices>& point) {
    for (std::size_t i = 0; i < N; ++i)
        if (!std::isfinite(point[i])) return false;
    return true;
}

}  // namespace quarn
