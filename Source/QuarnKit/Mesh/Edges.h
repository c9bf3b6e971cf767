/// \file
/// The edges of a mesh, each with the triangles that have it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Corners.h"

namespace quarn {

/// The number of the corner behind a corner. Corner c of triangle t has the number 3 * t + c, and so has the edge from
/// there to the next corner.
[[nodiscard]] constexpr std::uint32_t nextCorner(std::uint32_t corner) {
    return corner % 3 == 2 ? corner - 2 : corner + 1;
}

/// That a triangle has an edge.
struct HalfEdge {
    std::uint32_t low;  ///< The position, or position and UV, with the lower number.
    std::uint32_t high;
    std::uint32_t edge;  ///< In the triangle, see nextCorner().
    bool isForward;      ///< Whether the triangle runs from low to high.

    [[nodiscard]] std::uint32_t triangle() const { return edge / 3; }
};

/// All edges of some triangles.
class Edges {
public:
    /// \param isUsed by triangle; those that are left out have no edges
    Edges(const CornerIds& corners, const std::vector<bool>& isUsed);

    /// Calls \p visit with the halfEdges of each edge, in the order of their triangles.
    template <class Visit>
    void forEach(Visit visit) const {
        for (std::size_t first = 0; first < halfEdges.size();) {
            std::size_t last = first + 1;
            while (last < halfEdges.size() && halfEdges[last].low == halfEdges[first].low &&
                   halfEdges[last].high == halfEdges[first].high)
                ++last;
            visit(std::span(halfEdges).subspan(first, last - first));
            first = last;
        }
    }

private:
    std::vector<HalfEdge> halfEdges;
};

}  // namespace quarn
