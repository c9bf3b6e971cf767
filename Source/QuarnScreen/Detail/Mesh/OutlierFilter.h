/// \file
/// Mean of positions without outliers.
#pragma once

#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Removes the position farthest from the mean and recomputes the mean, until \p keep positions are
/// left, and returns their mean. Distances are not limited. The mean of no positions is NaN.
///
/// \param keep number of positions to keep
/// \param[in,out] points the kept positions, sorted by their distance from the mean; unchanged if
///        none is removed
[[nodiscard]] Point<double, 3> filterOutliersAndAverage(int keep, std::vector<Point<double, 3>>& points);

}  // namespace quarn::detail
