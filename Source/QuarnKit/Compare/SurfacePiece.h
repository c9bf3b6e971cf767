/// \file
/// Pieces of a surface with what is known of their distances from another surface.
#pragma once

#include <array>
#include <cstdint>

#include "TriangleTree.h"

namespace quarn {

/// A position of one surface, and the triangle of the other that is nearest to it.
struct MeasuredPosition {
    Point<double, 3> position;
    TriangleTree::Nearest nearest{TriangleTree::kNone, 0.0};
};

/// Measures a position. \p hint as for TriangleTree::nearest()
[[nodiscard]] inline MeasuredPosition measurePosition(const TriangleTree& tree,
                                                      const Point<double, 3>& position, std::uint32_t hint) {
    return {position, tree.nearest(position, hint)};
}

/// A triangle of one surface.
struct SurfacePiece {
    std::array<MeasuredPosition, 3> corners;
    double bound = 0.0;  ///< No position of the piece is farther from the other surface.

    [[nodiscard]] Point<double, 3> middle() const {
        return (corners[0].position + corners[1].position + corners[2].position) / 3.0;
    }
};

/// A bound from one position of the piece: the distance from its nearest triangle is greatest at a corner of the piece,
/// and from one position to another it changes by no more than the way between them.
[[nodiscard]] double boundOf(const TriangleTree& tree, const SurfacePiece& piece,
                             const MeasuredPosition& position);

/// Cuts a piece in four. Where two corners have different nearest triangles, the edge between them is cut where both are
/// equally near, so that the pieces soon lie along the edges of the other surface, where bounds are exact; else in its
/// middle.
/// \param accuracy to which that place is looked for
/// \return the pieces without their bounds
[[nodiscard]] std::array<SurfacePiece, 4> cut(const TriangleTree& tree, const SurfacePiece& piece,
                                              double accuracy);

}  // namespace quarn
