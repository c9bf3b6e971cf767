#include <QuarnScreen/ScreenGeometry.h>

#include <cmath>
#include <limits>

#include <Common/Detail/Assert.h>

namespace {

// Factor of the largest squared distance that a hit may have, relative to that of the screen's
// closest point.
constexpr double kSquaredDistanceFactor = 3.0;
// Constant part of that limit, in squared units of length. It accepts hits within 1e-3 of a
// position on the surface.
constexpr double kSquaredDistanceSlack = 1e-06;

double squaredDistance(const Point<double, 3>& a, const Point<double, 3>& b) {
    const Point<double, 3> difference = a - b;
    return dot(difference, difference);
}

// NaN stays NaN.
double clampedToUnit(double value) {
    if (value < 0.0) value = 0.0;
    if (value > 1.0) value = 1.0;
    return value;
}

}  // namespace

bool ScreenGeometry::getClosestIntersection(const Point<double, 3>& from, const Point<double, 3>& direction,
                                            IScreenGeometry* screen, Intersection& result, bool extrapolate) {
    QUARN_ASSERT(screen != nullptr);
    const auto hitsTowards = [&](const Point<double, 3>& to) {
        return extrapolate ? screen->intersectExtrapolatedWithSpecifiedNormal(from, to, 0)
                           : screen->intersect(from, to);
    };
    const IntersectionSet forward = hitsTowards(from + direction);
    const IntersectionSet backward = hitsTowards(from - direction);

    // Find the nearest hit; of equally near ones the first, forward hits before backward ones.
    Intersection best;
    double nearest = std::numeric_limits<double>::max();
    for (const IntersectionSet* hits : {&forward, &backward}) {
        for (const Intersection& hit : *hits) {
            const double distance = squaredDistance(from, hit.point);
            if (nearest > distance) {
                nearest = distance;
                best = hit;
            }
        }
    }
    // Intended: a hit that equals the default counts as none; a reader would expect a flag.
    if (best == Intersection()) return false;

    // Reject a hit far along a glancing line if the surface is much nearer elsewhere.
    const Point<double, 3> closest = screen->getClosestPoint(from);
    const double hitSquared = squaredDistance(best.point, from);
    const double closestSquared = squaredDistance(closest, from);
    if (!(closestSquared * kSquaredDistanceFactor + kSquaredDistanceSlack > hitSquared)) return false;

    if (!best.hasUV) {
        best.uv = screen->mapInto2D(best.point, extrapolate);
        best.hasUV = true;
    }
    result = best;
    return true;
}

Point<double, 3> ScreenGeometry::getClosestPoint(const Point<double, 3>& point) const {
    const Point<double, 2> uv = mapInto2D(point, false);
    Point<double, 3> closest;
    mapInto3D(Point<double, 2>(clampedToUnit(uv[0]), clampedToUnit(uv[1])), closest, false);
    return closest;
}

double ScreenGeometry::getShortestDistance(const Point<double, 3>& point) const {
    return std::sqrt(squaredDistance(point, getClosestPoint(point)));
}

void ScreenGeometry::getCentreFromScreenBounds(Point<double, 3>* center) const {
    QUARN_ASSERT(center != nullptr);
    Point<double, 3> min;
    Point<double, 3> max;
    getBounds(&min, &max);
    for (std::size_t i = 0; i < 3; ++i) (*center)[i] = std::abs(max[i] - min[i]) * 0.5 + min[i];
}
