/// \file
/// Pieces of a surface with bounds of their distances to another surface.
#pragma once

#include <array>
#include <cstdint>

#include "PositionMeter.h"

namespace quarn {

/// A triangle of one surface, or a part of one.
struct SurfacePiece {
    std::array<MeasuredPosition, 3> corners;
    double bound = 0.0;  ///< Upper bound of the distances of its positions to the other surface.

    [[nodiscard]] Point<double, 3> middle() const {
        return (corners[0].position + corners[1].position + corners[2].position) / 3.0;
    }
};

/// Returns an upper bound of the distances of the piece, from one of its positions. The distance to
/// the nearest triangle of that position is greatest at a corner of the piece. Between two
/// positions the distance changes by at most the length of the path between them.
[[nodiscard]] double boundOf(const TriangleTree& tree, const SurfacePiece& piece,
                             const MeasuredPosition& position);

/// Subdivides a piece into four. If two corners have different nearest triangles, the edge between
/// them is split where both triangles are equally near, otherwise at its midpoint. Pieces thus
/// align with the edges of the other surface, where the bounds are exact.
/// \param accuracy of the position at which an edge is split
/// \return the pieces without their bounds
[[nodiscard]] std::array<SurfacePiece, 4> subdivide(PositionMeter& meter, const SurfacePiece& piece,
                                                    double accuracy);

}  // namespace quarn
