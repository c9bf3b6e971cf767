/// \file
/// UVs that several triangles of a mesh have.
#pragma once

#include <cstdint>
#include <vector>

#include "MeshTopology.h"

namespace quarn {

/// The parts of the unit square of UV that two or more triangles cover, found at one point of each of its cells.
class UvOverlap {
public:
    static constexpr int kCells = 256;  ///< Along u and along v.

    explicit UvOverlap(const std::vector<TriangleUVs>& triangles);

    /// Part of the covered cells that are covered twice or more.
    [[nodiscard]] double share() const;
    [[nodiscard]] bool isAt(int column, int row) const { return counts[indexOf(column, row)] > 1; }

private:
    void add(const TriangleUVs& uvs);
    static std::size_t indexOf(int column, int row) {
        return static_cast<std::size_t>(row) * kCells + static_cast<std::size_t>(column);
    }

    std::vector<std::uint8_t> counts;  // of triangles, at most 2
};

}  // namespace quarn
