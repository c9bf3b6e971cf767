/// \file
/// The distance from one surface to another.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QuarnKit/Base/ThreadPool.h>

#include "TriangleTree.h"

namespace quarn {

/// How well a distance has to be known.
struct DistanceGoal {
    /// Default of `relativeAccuracy`.
    static constexpr double kRelativeAccuracy = 1e-3;

    double accuracy = 0.0;                        ///< Of the maximum distance; above 0.
    double relativeAccuracy = kRelativeAccuracy;  ///< The same as a fraction; the larger one applies.
    /// A length to decide about: the search also continues while it is between `max` and `bound`.
    std::optional<double> limit = {};

    /// Returns the bound up to which a search need not look for distances above \p maxDistance.
    [[nodiscard]] double sufficientBound(double maxDistance) const;
};

enum class SearchEnd {
    GoalReached,
    WorkLimit,  ///< The search ended before, because it reached its limit of work.
};

/// Distances from all positions of one surface to the nearest position of another.
struct SurfaceDistance {
    double max = 0.0;           ///< Maximum distance found, at `where`.
    double bound = 0.0;         ///< Upper bound of the true maximum.
    double mean = 0.0;          ///< Weighted by area, from samples; NaN if the area is zero.
    Point<double, 3> where;     ///< On the first surface.
    std::uint64_t samples = 0;  ///< Number of positions measured.
    SearchEnd end = SearchEnd::GoalReached;
};

/// Measures the distance from one surface to another by branch and bound.
///
/// Measures all corners and the centroids of all triangles; large triangles are subdivided first.
/// Then subdivides the pieces that may contain a greater distance, until `bound` exceeds `max` by
/// no more than the goal allows. The numbers of subdivisions and of visited tree nodes are limited;
/// at the limit `bound` may be greater. A position that is about equally far from many triangles is
/// measured with a fraction of the goal's accuracy, except the one at `where`. The result does not
/// depend on the number of threads.
/// \pre \p from has at least one triangle, and all its coordinates are finite
[[nodiscard]] SurfaceDistance surfaceDistance(const std::vector<TriangleCorners>& from,
                                              const TriangleTree& to, const DistanceGoal& goal,
                                              ThreadPool& pool);

}  // namespace quarn
