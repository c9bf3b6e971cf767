#include "TriangleContainment.h"

#include <cmath>

namespace quarn {

Holding testHolding(const Triangle& triangle, const Point<double, 3>& point) {
    Holding result;
    double t = 0.0;
    Point<double, 3> hit;
    result.holds =
        intersectTrianglePlane(point, point + triangle.normal, triangle, t, hit, result.a, result.b, false) &&
        kHoldingDistance > std::abs(t);
    return result;
}

}  // namespace quarn
