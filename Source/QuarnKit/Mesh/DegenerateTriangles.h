/// \file
/// Degenerate triangles.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Minimum height of a triangle that is not degenerate, as a fraction of its largest coordinate:
/// four steps between neighboring floats. Files store floats, so that smaller heights are rounding.
inline constexpr double kMinHeightRatio = 4.0 / 16777216.0;

/// Returns true if three corners are collinear within kMinHeightRatio.
template <std::size_t N>
[[nodiscard]] bool isDegenerateTriangle(const std::array<Point<double, N>, 3>& corners) {
    double largest = 0.0;
    for (const Point<double, N>& corner : corners)
        for (std::size_t i = 0; i < N; ++i) largest = std::max(largest, std::abs(corner[i]));
    const Point<double, N> a = corners[1] - corners[0];
    const Point<double, N> b = corners[2] - corners[0];
    const double longest = std::max({length(a), length(b), length(corners[2] - corners[1])});
    double squares = 0.0;
    for (std::size_t i = 0; i < N; ++i)
        for (std::size_t j = i + 1; j < N; ++j) {
            const double minor = a[i] * b[j] - a[j] * b[i];
            squares += minor * minor;
        }
    // Twice the area is height times base.
    return !(std::sqrt(squares) > kMinHeightRatio * largest * longest);
}

}  // namespace quarn
