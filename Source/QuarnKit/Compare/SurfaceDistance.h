/// \file
/// The distance from one surface to another.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnKit/Base/ThreadPool.h>

#include "TriangleTree.h"

namespace quarn {

/// Distances from all positions of one surface to the nearest position of another.
struct SurfaceDistance {
    double max = 0.0;           ///< Maximum distance found, at `where`.
    double bound = 0.0;         ///< Upper bound of the true maximum.
    double mean = 0.0;          ///< Weighted by area, from samples; NaN if the area is zero.
    Point<double, 3> where;     ///< On the first surface.
    std::uint64_t samples = 0;  ///< Number of positions measured.
};

/// Measures the distance from one surface to another by branch and bound.
///
/// Measures all corners and the centroids of all triangles; large triangles are subdivided first.
/// Then subdivides the pieces that may contain a greater distance, until `bound` exceeds `max` by
/// at most \p accuracy, or by a thousandth of `max` if that is more. The number of subdivisions is
/// limited; at the limit `bound` may be greater. The result does not depend on the number of
/// threads.
/// \pre \p from has at least one triangle, all its coordinates are finite, and accuracy > 0
[[nodiscard]] SurfaceDistance surfaceDistance(const std::vector<TriangleCorners>& from,
                                              const TriangleTree& to, double accuracy, ThreadPool& pool);

}  // namespace quarn
