/// \file
/// A coarse grid of the space that boxes occupy.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "FourBoxes.h"

namespace quarn::detail {

/// A grid over a sequence of boxes, with one bit for each cell: set if a box overlaps the cell. It
/// takes 256 KB, and decides about most positions that are in no box at the cost of one access.
///
/// Thread-safety: after build(), any number of threads may search at once.
class OccupancyGrid {
public:
    /// Rebuilds the grid.
    void build(const std::vector<FloatBox>& boxes);

    /// Returns false only if no box contains a position.
    [[nodiscard]] bool mayContain(const FloatPosition& position) const;

private:
    static constexpr std::size_t kCells = 128;  // per axis
    // A search among fewer boxes is fast without a grid.
    static constexpr std::size_t kMinBoxes = 64;
    // Of all boxes together. Boxes that overlap more are not worth the time.
    static constexpr std::size_t kMaxMarkedRows = 8'000'000;
    static constexpr std::size_t kWordBits = 64;
    static constexpr std::size_t kWords = kCells / kWordBits;  // of a row along the first axis

    // The cells of an axis, of the coordinate c: (c - lower) scale.
    struct Axis {
        float lower;
        float scale;

        [[nodiscard]] std::size_t cellOf(float coordinate) const;
    };

    [[nodiscard]] static std::size_t rowOf(std::size_t y, std::size_t z) { return (z * kCells + y) * kWords; }
    [[nodiscard]] bool measure();
    [[nodiscard]] std::size_t mark(const FloatBox& box);

    FloatBox whole = FloatBox::nowhere();
    std::array<Axis, 3> axes{};
    std::vector<std::uint64_t> words;  // empty if the grid would not exclude anything
};

}  // namespace quarn::detail
