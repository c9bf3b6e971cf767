/// \file
/// Numbers for points.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Numbers points from 0 in the order in which they come; equal points have one number.
///
/// Points are equal where all their coordinates are. They have to be finite. Not safe on several threads.
template <std::size_t N>
class VertexIds {
public:
    explicit VertexIds(std::size_t expected = 0);

    [[nodiscard]] std::uint32_t idOf(const Point<double, N>& point);
    /// The points by their numbers.
    [[nodiscard]] const std::vector<Point<double, N>>& points() const { return known; }

private:
    [[nodiscard]] std::size_t slotOf(const Point<double, N>& point) const;
    void grow(std::size_t count);

    std::vector<Point<double, N>> known;
    std::vector<std::uint32_t> slots;  // a power of two of them; a number plus 1, or 0 in a free one
};

extern template class VertexIds<2>;
extern template class VertexIds<3>;
extern template class VertexIds<5>;

}  // namespace quarn
