/// \file
/// Which triangles have no area.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Least height of a triangle, as a part of its greatest coordinate: files hold floats, and corners nearer to a line than
/// four steps between neighbouring floats are on it as far as anybody can tell.
inline constexpr double kMinHeightRatio = 4.0 / 16777216.0;

/// Whether three corners are on one line, within kMinHeightRatio.
template <std::size_t N>
[[nodiscard]] bool isDegenerateTriangle(const std::array<Point<double, N>, 3>& corners) {
    double greatest = 0.0;
    for (const Point<double, N>& corner : corners)
        for (std::size_t i = 0; i < N; ++i) greatest = std::max(greatest, std::abs(corner[i]));
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
    return !(std::sqrt(squares) > kMinHeightRatio * greatest * longest);
}

}  // namespace quarn
