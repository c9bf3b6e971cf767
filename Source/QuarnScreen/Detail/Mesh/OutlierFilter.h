/// \file
/// The mean of the positions that agree.
#pragma once

#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Peels off the position farthest from the mean, one at a time with the mean taken anew, until \p keep are left, and
/// returns their mean. There is no limit on the distance. The mean of no positions is NaN.
///
/// \param[in,out] points left are those that were kept, nearest to the mean first; where none has to go they stay as
///        they are
[[nodiscard]] Point<double, 3> filterOutliersAndAverage(int keep, std::vector<Point<double, 3>>& points);

}  // namespace quarn::detail
