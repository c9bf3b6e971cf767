/// \file
/// Four boxes that are tested together.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "FloatBox.h"

namespace quarn::detail {

/// Number of boxes or positions that a search processes together. The compiler uses one vector
/// instruction for four floats.
inline constexpr std::size_t kLanes = 4;

/// A position rounded to single precision.
///
/// Rounding keeps the order of numbers. Therefore a float box that contains the exact position also
/// contains the rounded one.
struct FloatPosition {
    explicit FloatPosition(const Point<double, 3>& point)
        : coordinates{static_cast<float>(point[0]), static_cast<float>(point[1]),
                      static_cast<float>(point[2])} {}

    std::array<float, 3> coordinates;
};

/// A set of lanes: bit i is set if it contains lane i.
struct LaneSet {
    std::uint32_t bits;

    /// Calls `visit(lane)` for each lane, in ascending order.
    template <class Visit>
    void forEach(Visit&& visit) const {
        for (std::uint32_t left = bits; left != 0; left &= left - 1)
            visit(static_cast<std::size_t>(std::countr_zero(left)));
    }
};

/// Four boxes, coordinate by coordinate.
struct alignas(16) FourBoxes {
    std::array<std::array<float, kLanes>, 3> lower;
    std::array<std::array<float, kLanes>, 3> upper;

    /// Returns four empty boxes.
    [[nodiscard]] static FourBoxes nowhere();

    /// Replaces one box.
    void set(std::size_t lane, const FloatBox& box);

    /// Returns the smallest box around all four.
    [[nodiscard]] FloatBox whole() const;

    /// Returns the lanes of the boxes that contain a position. A NaN is in no box.
    [[nodiscard]] LaneSet lanesAround(const FloatPosition& position) const;

    /// Returns a lower bound of the squared distances from a finite position to the positions in
    /// each box; infinity for an empty box.
    ///
    /// No operation rounds in another order than PointKDTree::squaredDistance() does, and rounding
    /// keeps the order of numbers. Therefore the bound is exact: it is not greater than any squared
    /// distance that is computed so.
    [[nodiscard]] std::array<double, kLanes> squaredDistances(const Point<double, 3>& point) const;
};

}  // namespace quarn::detail
