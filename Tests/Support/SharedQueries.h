/// \file
/// Two of the queries that all shapes share, in the form that tests call them.
#pragma once

#include <QuarnScreen/ScreenGeometry.h>

namespace quarn::test {

/// The closest intersection along a line of either direction.
inline bool closest(const Point<double, 3>& from, const Point<double, 3>& direction, IScreenGeometry& screen,
                    Intersection& result, bool extrapolate = false) {
    return ScreenGeometry::getClosestIntersection(from, direction, &screen, result, extrapolate);
}

/// The middle of a screen's bounds.
inline Point<double, 3> centreOf(const ScreenGeometry& screen) {
    Point<double, 3> centre(9.0, 9.0, 9.0);
    screen.getCentreFromScreenBounds(&centre);
    return centre;
}

}  // namespace quarn::test
