#include "QuadtreeSubdivision.h"

#include <algorithm>

namespace quarn::detail {

RegionRect uvBoxOf(const Point<double, 2>& a, const Point<double, 2>& b, const Point<double, 2>& c) {
    return {std::min(std::min(a[0], b[0]), c[0]), std::max(std::max(a[0], b[0]), c[0]),
            std::min(std::min(a[1], b[1]), c[1]), std::max(std::max(a[1], b[1]), c[1])};
}

RegionRect unionOf(const std::vector<RegionRect>& boxes) {
    constexpr double kMaxDouble = std::numeric_limits<double>::max();
    RegionRect whole = {kMaxDouble, -kMaxDouble, kMaxDouble, -kMaxDouble};
    for (const RegionRect& box : boxes)
        whole = {std::min(whole.minU, box.minU), std::max(whole.maxU, box.maxU),
                 std::min(whole.minV, box.minV), std::max(whole.maxV, box.maxV)};
    return whole;
}

}  // namespace quarn::detail
