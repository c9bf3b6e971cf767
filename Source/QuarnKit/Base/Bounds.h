/// \file
/// Axis-aligned bounding boxes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>

#include <QuarnScreen/Point.h>

namespace quarn {

/// The smallest axis-aligned box around some points. A box without points is inverted: its minimum
/// is infinity, and its maximum is minus infinity.
///
/// A coordinate that is NaN is ignored, except in the point that the constructor takes.
template <std::size_t N>
struct Bounds {
    Point<double, N> min;
    Point<double, N> max;

    Bounds() {
        for (std::size_t i = 0; i < N; ++i) {
            min[i] = std::numeric_limits<double>::infinity();
            max[i] = -std::numeric_limits<double>::infinity();
        }
    }
    explicit Bounds(const Point<double, N>& point) : min(point), max(point) {}

    /// Grows the box until it contains \p point.
    void include(const Point<double, N>& point) {
        for (std::size_t i = 0; i < N; ++i) {
            min[i] = std::min(min[i], point[i]);
            max[i] = std::max(max[i], point[i]);
        }
    }
    /// Grows the box until it contains \p other.
    void include(const Bounds& other) {
        for (std::size_t i = 0; i < N; ++i) {
            min[i] = std::min(min[i], other.min[i]);
            max[i] = std::max(max[i], other.max[i]);
        }
    }

    [[nodiscard]] bool isEmpty() const { return min[0] > max[0]; }
    [[nodiscard]] Point<double, N> extent() const { return max - min; }
};

}  // namespace quarn
