/// \file
/// The distance between positions of equal UV on two screens.
#pragma once

#include <cstdint>
#include <optional>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// Distances between the positions of two screens for the same UV.
struct UvDistance {
    double max = 0.0;  ///< Maximum distance, at `where`.
    double mean = 0.0;
    Point<double, 3> where;     ///< On the first screen.
    std::uint64_t samples = 0;  ///< Number of UVs for which both screens have a position.
};

/// Measures the distances at the centers of a grid of cells in UV.
/// \return nothing if a screen has no UV, or if no sampled UV has a position on both
[[nodiscard]] std::optional<UvDistance> uvDistance(const IScreenGeometry& a, const IScreenGeometry& b);

}  // namespace quarn
