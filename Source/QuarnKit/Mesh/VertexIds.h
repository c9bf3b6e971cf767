/// \file
/// Consecutive numbers for distinct points.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Numbers points from 0 in order of first appearance; equal points have one number.
///
/// Points are equal if all their coordinates are, so that 0 and -0 are one. Not safe on several
/// threads.
template <std::size_t N>
class VertexIds {
public:
    /// \param expected number of distinct points, to reserve memory
    explicit VertexIds(std::size_t expected = 0);

    /// Returns the number of a point, which is new if no equal point was numbered before.
    /// \pre all coordinates are finite
    [[nodiscard]] std::uint32_t idOf(const Point<double, N>& point);
    /// Returns the points by their numbers.
    [[nodiscard]] const std::vector<Point<double, N>>& points() const { return known; }

private:
    [[nodiscard]] std::size_t slotOf(const Point<double, N>& point) const;
    void grow(std::size_t count);

    std::vector<Point<double, N>> known;
    std::vector<std::uint32_t> slots;  // count is a power of two; a number plus 1, or 0 if free
};

extern template class VertexIds<2>;
extern template class VertexIds<3>;
extern template class VertexIds<5>;

}  // namespace quarn
