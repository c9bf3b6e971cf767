#include "RuledArea.h"

#include <cmath>

namespace quarn {

namespace {

// Intervals of Simpson's rule along the arcs and along the rulings. The integrand is smooth, and
// the error is of the order of the fourth power of an interval.
constexpr int kArcIntervals = 1024;
constexpr int kRulingIntervals = 256;

struct Planar {
    double x = 0.0;
    double y = 0.0;
};

double radiusOf(double width, double arc) {
    return width * 0.5 / std::sin(arc * 0.5);
}

double weightOf(int index, int intervals) {
    if (index == 0 || index == intervals) return 1.0;
    return index % 2 == 0 ? 2.0 : 4.0;
}

// An arc at one parameter: the position relative to the chord's middle, and its derivative.
struct ArcPoint {
    Planar position;
    Planar derivative;

    ArcPoint(double arc, double radius, double u) {
        const double angle = arc * (u - 0.5);
        const double sine = std::sin(angle);
        const double cosine = std::cos(angle);
        position = {.x = radius * sine, .y = radius * (cosine - std::cos(arc * 0.5))};
        derivative = {.x = radius * arc * cosine, .y = -radius * arc * sine};
    }
};

// Returns the integral along one ruling: that of the length of the cross product of the derivatives
// of the surface along u and v.
double areaAlongRuling(const ArcPoint& top, const ArcPoint& bottom, double height) {
    const Planar along{.x = bottom.position.x - top.position.x, .y = bottom.position.y - top.position.y};
    double sum = 0.0;
    for (int i = 0; i <= kRulingIntervals; ++i) {
        const double v = static_cast<double>(i) / kRulingIntervals;
        const double x = (1.0 - v) * top.derivative.x + v * bottom.derivative.x;
        const double y = (1.0 - v) * top.derivative.y + v * bottom.derivative.y;
        sum += weightOf(i, kRulingIntervals) * std::hypot(height * x, height * y, x * along.y - y * along.x);
    }
    return sum / (3.0 * kRulingIntervals);
}

}  // namespace

double RuledShape::topRadius() const {
    return radiusOf(width, topArc);
}

double RuledShape::bottomRadius() const {
    return radiusOf(width, bottomArc);
}

double ruledAreaOf(const RuledShape& shape) {
    const double topRadius = shape.topRadius();
    if (shape.topArc == shape.bottomArc) return std::abs(topRadius * shape.topArc * shape.height);
    const double bottomRadius = shape.bottomRadius();
    double sum = 0.0;
    for (int i = 0; i <= kArcIntervals; ++i) {
        const double u = static_cast<double>(i) / kArcIntervals;
        sum += weightOf(i, kArcIntervals) * areaAlongRuling(ArcPoint(shape.topArc, topRadius, u),
                                                            ArcPoint(shape.bottomArc, bottomRadius, u),
                                                            shape.height);
    }
    return sum / (3.0 * kArcIntervals);
}

}  // namespace quarn
