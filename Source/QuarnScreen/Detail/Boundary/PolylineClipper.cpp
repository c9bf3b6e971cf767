#include "PolylineClipper.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace quarn::detail {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Returns the position of a point on the line from `end` (0) to `start` (1), by the coordinate in
// which the two differ more.
double positionOn(const Point<double, 2>& start, const Point<double, 2>& end, const Point<double, 2>& point) {
    const double dx = start[0] - end[0];
    const double dy = start[1] - end[1];
    return std::abs(dy) > std::abs(dx) ? (point[1] - end[1]) / dy : (point[0] - end[0]) / dx;
}

bool isInUnitRange(double number) {
    return number >= 0.0 && number <= 1.0;
}

}  // namespace

Point<double, 2> intersectSegments(const Point<double, 2>& a, const Point<double, 2>& b,
                                   const Point<double, 2>& c, const Point<double, 2>& d) {
    const double dx = c[0] - d[0];
    const double dy = c[1] - d[1];
    // Parallel lines divide by zero. The result then fails the range checks below.
    const double t = ((c[0] - a[0]) * dy - (c[1] - a[1]) * dx) / (dy * (b[0] - a[0]) - dx * (b[1] - a[1]));
    const Point<double, 2> meeting = a + t * (b - a);
    if (isInUnitRange(positionOn(a, b, meeting)) && isInUnitRange(positionOn(c, d, meeting))) return meeting;
    return {kNaN, kNaN};
}

PolylineClipper::PolylineClipper(Polyline polygonPoints)
    : polygon(std::move(polygonPoints)), bands(polygon) {}

void PolylineClipper::clip(const Polyline& polyline, std::vector<Polyline>& pieces) const {
    pieces.emplace_back();
    if (polyline.empty()) return;
    bool wasInside = bands.contains(polyline.front());
    if (wasInside) pieces.back().push_back(polyline.front());
    for (std::size_t i = 1; i < polyline.size(); ++i) {
        const bool isInside = bands.contains(polyline[i]);
        if (isInside && wasInside) pieces.back().push_back(polyline[i]);
        if (isInside != wasInside)
            appendCrossing(polyline[i - 1], polyline[i], isInside ? Crossing::Entering : Crossing::Leaving,
                           pieces);
        wasInside = isInside;
    }
}

void PolylineClipper::appendCrossing(const Point<double, 2>& from, const Point<double, 2>& to,
                                     Crossing direction, std::vector<Polyline>& pieces) const {
    for (std::size_t k = 0; k < polygon.size(); ++k) {
        const Point<double, 2>& next = polygon[k + 1 < polygon.size() ? k + 1 : 0];
        const Point<double, 2> crossing = intersectSegments(polygon[k], next, from, to);
        if (std::isnan(crossing[0])) continue;
        if (direction == Crossing::Entering) pieces.emplace_back();
        pieces.back().push_back(crossing);
        if (direction == Crossing::Entering) pieces.back().push_back(to);
        return;
    }
}

}  // namespace quarn::detail
