/// \file
/// The edges of a mesh, each with the triangles that have it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Check/Corners.h"

namespace quarn {

/// That a triangle has an edge.
struct EdgeUse {
    std::uint32_t low;  ///< The corner with the lower number.
    std::uint32_t high;
    std::uint32_t triangle;
    bool isForward;  ///< Whether the triangle runs from low to high.
};

/// All edges of some triangles.
class Edges {
public:
    /// \param isUsed by triangle; those that are left out have no edges
    Edges(const CornerNumbers& corners, const std::vector<bool>& isUsed);

    /// Calls \p visit with the uses of each edge, in the order of their triangles.
    template <class Visit>
    void forEach(Visit visit) const {
        for (std::size_t first = 0; first < uses.size();) {
            std::size_t last = first + 1;
            while (last < uses.size() && uses[last].low == uses[first].low &&
                   uses[last].high == uses[first].high)
                ++last;
            visit(std::span(uses).subspan(first, last - first));
            first = last;
        }
    }

private:
    std::vector<EdgeUse> uses;
};

}  // namespace quarn
