#include "TriangleContainment.h"

#include <cmath>

namespace quarn::detail {

Containment testContainment(const Triangle& triangle, const Point<double, 3>& point) {
    Containment result;
    double t = 0.0;
    Point<double, 3> hit;
    result.contains =
        intersectTrianglePlane(point, point + triangle.normal, triangle, t, hit, result.a, result.b, false) &&
        kContainmentDistance > std::abs(t);
    return result;
}

}  // namespace quarn::detail
