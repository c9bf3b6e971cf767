/// \file
/// Numbers for positions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Numbers positions from 0 in the order in which they come; equal positions have one number.
///
/// Positions are equal where all their coordinates are. They have to be finite. Not safe on several threads.
class PointIds {
public:
    explicit PointIds(std::size_t expected = 0);

    [[nodiscard]] std::uint32_t idOf(const Point<double, 3>& point);
    /// The positions by their numbers.
    [[nodiscard]] const std::vector<Point<double, 3>>& points() const { return known; }

private:
    [[nodiscard]] std::size_t slotOf(const Point<double, 3>& point) const;
    void grow(std::size_t count);

    std::vector<Point<double, 3>> known;
    std::vector<std::uint32_t> slots;  // a power of two of them; a number plus 1, or 0 in a free one
};

}  // namespace quarn
