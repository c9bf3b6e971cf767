/// \file
/// How far one surface is from another.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnKit/Base/ThreadPool.h>

#include "TriangleTree.h"

namespace quarn {

/// The distances of all positions of one surface to the nearest of another.
struct SurfaceDistance {
    double greatest = 0.0;      ///< Found at `where`.
    double bound = 0.0;         ///< No position is farther.
    double mean = 0.0;          ///< By area, from samples; NaN for a surface without area.
    Point<double, 3> where;     ///< Of the first surface.
    std::uint64_t samples = 0;  ///< Positions that were measured.
};

/// Measures all corners and the middles of all triangles, of which large ones are cut; then cuts on where a greater
/// distance may hide, until no place can be more than \p accuracy, or a thousandth of the greatest distance, farther.
///
/// It gives up after some cuts for each triangle; then `bound` is greater. The answer does not depend on the number of
/// threads.
/// \param accuracy above 0
/// \pre at least one triangle
[[nodiscard]] SurfaceDistance surfaceDistance(const std::vector<Corners>& from, const TriangleTree& to,
                                              double accuracy, ThreadPool& pool);

}  // namespace quarn
