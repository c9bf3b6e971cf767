/// \file
/// The edges of a mesh, each with its triangles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Corners.h"

namespace quarn {

/// Returns the number of the next corner of the triangle. Corner c of triangle t has the number
/// 3 * t + c, and so has the edge from there to the next corner.
[[nodiscard]] constexpr std::uint32_t nextCorner(std::uint32_t corner) {
    return corner % 3 == 2 ? corner - 2 : corner + 1;
}

/// An edge of one triangle.
struct HalfEdge {
    std::uint32_t low;   ///< The lower vertex, see CornerIds.
    std::uint32_t high;  ///< The higher vertex.
    std::uint32_t edge;  ///< Number of the edge, see nextCorner().
    bool isForward;      ///< True if the triangle traverses it from low to high.

    [[nodiscard]] std::uint32_t triangle() const { return edge / 3; }
};

/// All edges of some triangles.
class Edges {
public:
    /// \param isUsed by triangle; false excludes its edges
    Edges(const CornerIds& corners, const std::vector<bool>& isUsed);

    /// Calls \p visit with the half-edges of each edge, in the order of their triangles.
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
