/// \file
/// The test of a point against an outline written plainly: all segments, one after the other.
#pragma once

#include <algorithm>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::bench {

inline bool isOnSegment(const Point<double, 2>& from, const Point<double, 2>& to,
                        const Point<double, 2>& point) {
    constexpr double kTolerance = 1e-9;
    for (std::size_t i = 0; i < 2; ++i) {
        if (!(point[i] >= std::min(from[i], to[i]) - kTolerance)) return false;
        if (!(point[i] <= std::max(from[i], to[i]) + kTolerance)) return false;
    }
    const Point<double, 2> along = to - from;
    const double squared = dot(along, along);
    const double t = squared == 0.0 ? 0.0 : std::clamp(dot(point - from, along) / squared, 0.0, 1.0);
    const Point<double, 2> offset = point - (from + t * along);
    return dot(offset, offset) <= kTolerance * kTolerance;
}

/// Whether an outline holds a point, or the point lies on it.
inline bool isWithin(const std::vector<Point<double, 2>>& outline, const Point<double, 2>& point) {
    if (outline.empty()) return false;
    bool isInside = false;
    Point<double, 2> previous = outline.back();
    for (const Point<double, 2>& current : outline) {
        if ((current[1] > point[1]) != (previous[1] > point[1])) {
            const double crossing =
                (previous[0] - current[0]) * (point[1] - current[1]) / (previous[1] - current[1]) +
                current[0];
            if (crossing > point[0]) isInside = !isInside;
        }
        if (isOnSegment(current, previous, point)) return true;
        previous = current;
    }
    return isInside;
}

}  // namespace quarn::bench
