/// \file
/// Reference implementation of the point-in-polygon test.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::test {

inline bool referencePointInPolygon(const std::vector<Point<double, 2>>& outline, double pu, double pv) {
    bool isInside = false;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const auto& previous = outline[(i == 0 ? outline.size() : i) - 1];
        const double u = outline[i][0];
        const double v = outline[i][1];
        const double du = previous[0] - u;
        const double dv = previous[1] - v;
        if ((v > pv) != (previous[1] > pv) && du * (pv - v) / dv + u > pu) isInside = !isInside;

        if (!(pu >= std::min(u, previous[0]) - 1e-9 && pu <= std::max(u, previous[0]) + 1e-9)) continue;
        if (!(pv >= std::min(v, previous[1]) - 1e-9 && pv <= std::max(v, previous[1]) + 1e-9)) continue;
        double t = ((pu - u) * du + (pv - v) * dv) / (du * du + dv * dv);
        if (du * du + dv * dv == 0.0) t = 0.0;
        if (t < 0.0) t = 0.0;
        if (t > 1.0) t = 1.0;
        const double offU = pu - (u + t * du);
        const double offV = pv - (v + t * dv);
        if (offU * offU + offV * offV <= 1e-18) return true;
    }
    return isInside;
}

}  // namespace quarn::test
