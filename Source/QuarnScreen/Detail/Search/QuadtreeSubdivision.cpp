#include "QuadtreeSubdivision.h"

#include <algorithm>

namespace quarn::detail {

RegionRect unionOf(const std::vector<RegionRect>& boxes) {
    constexpr double kMaxDouble = std::numeric_limits<double>::max();
    RegionRect whole = {kMaxDouble, -kMaxDouble, kMaxDouble, -kMaxDouble};
    for (const RegionRect& box : boxes)
        whole = {std::min(whole.minU, box.minU), std::max(whole.maxU, box.maxU),
                 std::min(whole.minV, box.minV), std::max(whole.maxV, box.maxV)};
    return whole;
}

}  // namespace quarn::detail
