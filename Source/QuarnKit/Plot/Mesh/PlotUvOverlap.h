/// \file
/// Areas in UV that several triangles cover, for a picture.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnKit/Mesh/TriangleCorners.h>

namespace quarn {

/// The parts of the unit square of UV that two or more triangles cover, sampled at one point of
/// each cell.
class PlotUvOverlap {
public:
    static constexpr int kCells = 256;  ///< Along u and along v.

    /// \param overlapping indices of the triangles that overlap with another one
    PlotUvOverlap(const std::vector<TriangleUVs>& triangles, const std::vector<std::uint32_t>& overlapping);

    [[nodiscard]] bool isAt(int column, int row) const { return counts[indexOf(column, row)] > 1; }

private:
    void add(const TriangleUVs& uvs);
    /// Returns the first column from \p column on that fewer than two triangles cover; kCells if
    /// there is none.
    [[nodiscard]] int nextOpen(int column, int row);
    static std::size_t indexOf(int column, int row) {
        return static_cast<std::size_t>(row) * kCells + static_cast<std::size_t>(column);
    }
    // Rows of followers have one more column.
    static std::size_t followerOf(int column, int row) {
        return static_cast<std::size_t>(row) * (kCells + 1) + static_cast<std::size_t>(column);
    }

    std::vector<std::uint8_t> counts;  // of triangles, at most 2
    // A column in the direction of the next one that fewer than two triangles cover: itself if it
    // is one (union-find).
    std::vector<std::uint16_t> followers;
};

}  // namespace quarn
