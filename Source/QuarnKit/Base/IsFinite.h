/// \file
/// Positions and UV pairs that can be used.
#pragma once

#include <cmath>
#include <cstddef>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Whether no coordinate is NaN or infinite.
template <std::size_t N, class Indices>
[[nodiscard]] bool isFinite(const Point<double, N, Indices>& point) {
    for (std::size_t i = 0; i < N; ++i)
        if (!std::isfinite(point[i])) return false;
    return true;
}

}  // namespace quarn
