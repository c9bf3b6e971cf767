/// \file
/// How far apart two screens have the same UV.
#pragma once

#include <cstdint>
#include <optional>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// The distances between the positions that two screens have for the same UV.
struct UvDistance {
    double greatest = 0.0;
    double mean = 0.0;
    Point<double, 3> where;     ///< On the first screen, of the greatest distance.
    std::uint64_t samples = 0;  ///< UVs that both screens have a position for.
};

/// Takes the middles of a grid of cells in UV. Nothing where a screen has no UV, or no UV has a position on both.
[[nodiscard]] std::optional<UvDistance> uvDistance(const IScreenGeometry& a, const IScreenGeometry& b);

}  // namespace quarn
