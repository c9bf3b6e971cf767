/// \file
/// Four boxes that are tested together.
#pragma once

#include <algorithm>
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
    [[nodiscard]] LaneSet lanesAround(const FloatPosition& position) const {
        constexpr std::array<std::uint32_t, kLanes> kBits = {1, 2, 4, 8};
        const float x = position.coordinates[0];
        const float y = position.coordinates[1];
        const float z = position.coordinates[2];
        std::uint32_t inside = 0;
        // Without branches, which would keep the compiler from using vector instructions.
        for (std::size_t i = 0; i < kLanes; ++i) {
            const std::uint32_t isInside = isBetween(lower[0][i], x, upper[0][i]) &
                                           isBetween(lower[1][i], y, upper[1][i]) &
                                           isBetween(lower[2][i], z, upper[2][i]);
            inside |= (0U - isInside) & kBits[i];
        }
        return LaneSet{inside};
    }

    /// Returns a lower bound of the squared distances from a finite position to the positions in
    /// each box; infinity for an empty box.
    ///
    /// No operation rounds in another order than PointKDTree::squaredDistance() does, and rounding
    /// keeps the order of numbers. Therefore the bound is exact: it is not greater than any squared
    /// distance that is computed so.
    [[nodiscard]] std::array<double, kLanes> squaredDistances(const Point<double, 3>& point) const {
        const double x = point[0];
        const double y = point[1];
        const double z = point[2];
        std::array<double, kLanes> squared{};
        for (std::size_t i = 0; i < kLanes; ++i) {
            const double differenceX = x - clamped(lower[0][i], x, upper[0][i]);
            const double differenceY = y - clamped(lower[1][i], y, upper[1][i]);
            const double differenceZ = z - clamped(lower[2][i], z, upper[2][i]);
            squared[i] = differenceX * differenceX + differenceY * differenceY + differenceZ * differenceZ;
        }
        return squared;
    }

private:
    // Returns 1 or 0.
    [[nodiscard]] static std::uint32_t isBetween(float from, float coordinate, float to) {
        return static_cast<std::uint32_t>(from <= coordinate) & static_cast<std::uint32_t>(coordinate <= to);
    }
    // Returns the coordinate of an interval that is nearest to another one. Minus infinity for an
    // empty interval.
    [[nodiscard]] static double clamped(float from, double coordinate, float to) {
        return std::min(std::max(coordinate, static_cast<double>(from)), static_cast<double>(to));
    }
};

}  // namespace quarn::detail
