// The searches of the ruled screen: for the ruling that a line crosses, and for the ruling through
// a position.
#include <cmath>
#include <utility>

#include <Common/XmlHelper.h>
#include <QuarnScreen/Detail/Platform/Sign.h>
#include <QuarnScreen/Lines.h>
#include <QuarnScreen/RuledSurfaceScreen.h>

namespace {

// Length of the interval in u at which the search for a ruling ends.
constexpr double kRulingTolerance = 1e-06;

// Maximum distance of a position on the screen from the surface, in the screen's unit, and from the
// unit square in UV.
constexpr double kOnScreenTolerance = 1e-06;
constexpr double kMaxOnScreenUV = 1.0 + kOnScreenTolerance;

// Largest arc whose normals are certainly found, in radians. It is pi truncated to twelve decimals,
// so that pi itself exceeds it.
constexpr double kMaxArc = 3.141592653589;

// Limits of the search for the ruling through a position. The acceptance rejects no sine.
constexpr int kNormalIterations = 200;
constexpr double kNormalTolerance = 1e-05;
constexpr double kNormalAcceptance = 2.0;
// Maximum distance from the surface of a position with a normal, as a fraction of the width.
constexpr double kMaxNormalErrorRatio = 0.01;

constexpr Point<double, 3> kTowardsScreen(0.0, 1.0, 0.0);

// Format the message only if its level is enabled, so that queries do not allocate.
void warnOfGreatArc(const log4cxx::LoggerPtr& logger) {
    if (!logger->isWarnEnabled()) return;
    logger->warn(
        std::wstring(L"getScreenNormal for ruled surface screen might not work if the angle of curvature is "
                     L"more that 180 degrees"));
}

Point<double, 3> normalNotFound(const log4cxx::LoggerPtr& logger, const Point<double, 3>& point) {
    if (logger->isWarnEnabled())
        logger->warn(XmlHelper::format(L"couldn't find solution for getScreenNormal at : %f %f %f", point[0],
                                       point[1], point[2]));
    return {};
}

}  // namespace

bool bisectRoot(std::function<double(double)> function, double& root, double low, double high,
                int maxIterations, double tolerance, double acceptance) {
    double mid = 0.0;
    for (int i = 0; i < maxIterations; ++i) {
        mid = (high + low) * 0.5;
        if (0 >= function(mid))
            low = mid;
        else
            high = mid;
        if (tolerance >= high - low) break;
    }
    root = mid;
    return !(function(mid) > acceptance);
}

bool RuledSurfaceScreen::isLeft(double t, Point<double, 3> from, Point<double, 3> to) const {
    const Point<double, 3> bottom = alongBottomCurve(t);
    const Point<double, 3> ruling = alongTopCurve(t) - bottom;
    return dot(to - from, cross(from - bottom, ruling)) > 0.0;
}

// Returns the parameter of the ruling that a line towards +Y crosses.
std::optional<double> RuledSurfaceScreen::findRuling(const Point<double, 3>& from,
                                                     const Point<double, 3>& to) const {
    double high = searchHigh;
    double low = searchLow;
    double mid = (low + high) * 0.5;
    if (low > high) std::swap(low, high);
    if (!isLeft(high, from, to) || isLeft(low, from, to)) return std::nullopt;
    while (high - low > kRulingTolerance) {
        if (isLeft(mid, from, to))
            high = mid;
        else
            low = mid;
        mid = (low + high) * 0.5;
    }
    return mid;
}

std::optional<Intersection> RuledSurfaceScreen::intersectWithExtrapolation(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           bool extrapolate) const {
    const std::optional<double> u = findRuling(from, to);
    if (!u) return std::nullopt;

    const Point<double, 3> top = alongTopCurve(*u);
    const Point<double, 3> bottom = alongBottomCurve(*u);
    Intersection hit;
    Point<double, 3> onRuling;
    if (!closestPointsBetweenLines(top, bottom, from, to, onRuling, hit.point)) return std::nullopt;

    const double distanceToTop = length(onRuling - top);
    const double distanceToBottom = length(onRuling - bottom);
    const double rulingLength = length(bottom - top);
    const bool isBeyondArcs = distanceToTop > rulingLength || distanceToBottom > rulingLength;
    if (!extrapolate && isBeyondArcs) return std::nullopt;

    // Intended: v has no sign, so that positions above the top edge have the v of positions below
    // it.
    hit.uv = Point<double, 2>(*u, distanceToTop / rulingLength);
    hit.hasUV = true;
    hit.normalSign = quarn::detail::signOf(dot(to - from, getScreenNormal(hit.point)));
    return hit;
}

IntersectionSet RuledSurfaceScreen::intersect(const Point<double, 3>& from,
                                              const Point<double, 3>& to) const {
    const std::optional<Intersection> hit = intersectWithExtrapolation(from, to, false);
    return hit ? IntersectionSet(*hit) : IntersectionSet();
}

IntersectionSet RuledSurfaceScreen::intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                             const Point<double, 3>& to,
                                                                             int /*normalSign*/) const {
    const std::optional<Intersection> hit = intersectWithExtrapolation(from, to, true);
    return hit ? IntersectionSet(*hit) : IntersectionSet();
}

std::optional<Intersection> RuledSurfaceScreen::projectAlongY(const Point<double, 3>& point) const {
    return intersectWithExtrapolation(point, point + kTowardsScreen, true);
}

bool RuledSurfaceScreen::isOnScreenSection(const Point<double, 3>& point) const {
    const std::optional<Intersection> hit = projectAlongY(point);
    if (!hit || length(point - hit->point) > kOnScreenTolerance) return false;
    const Point<double, 2> uv = mapInto2D(hit->point, false);
    return uv[0] > -kOnScreenTolerance && kMaxOnScreenUV > uv[0] && uv[1] > -kOnScreenTolerance &&
           kMaxOnScreenUV > uv[1];
}

Point<double, 2> RuledSurfaceScreen::mapInto2D(const Point<double, 3>& point, bool /*extrapolate*/) const {
    const std::optional<Intersection> hit = projectAlongY(point);
    return hit ? hit->uv : Point<double, 2>();
}

// Returns the sine of the angle at the bottom end of a ruling between the ruling and a position.
// Its sign is the side of the position. Its root is the ruling through the position.
double RuledSurfaceScreen::signedSineFromRuling(double u, const Point<double, 3>& point) const {
    const Point<double, 3> top = alongTopCurve(u);
    const Point<double, 3> bottom = alongBottomCurve(u);
    const Point<double, 3> normalOfBoth = cross(normalized(point - bottom), normalized(top - bottom));
    const double sign = dot(normalOfBoth, kTowardsScreen) > 0 ? 1.0 : -1.0;
    return length(normalOfBoth) * sign;
}

Point<double, 3> RuledSurfaceScreen::getScreenNormal(const Point<double, 3>& point) const {
    if (std::abs(topArc) > kMaxArc || std::abs(bottomArc) > kMaxArc) warnOfGreatArc(log);

    // Find the UV of the position.
    const double v = (point[2] - topCenter[2]) / (bottomCenter[2] - topCenter[2]);
    double u = 0.0;
    const auto sine = [this, &point](double t) { return signedSineFromRuling(t, point); };
    if (!bisectRoot(sine, u, 0.0, 1.0, kNormalIterations, kNormalTolerance, kNormalAcceptance))
        return normalNotFound(log, point);
    Point<double, 3> onSurface;
    mapInto3D(Point<double, 2>(u, v), onSurface, true);
    const double error = length(point - onSurface) / width;
    if (!(kMaxNormalErrorRatio > error)) return normalNotFound(log, point);

    // The normal is orthogonal to both tangents and points away from the line between the centers
    // of the arcs.
    const Point<double, 3> alongArcs =
        v * alongBottomCurveDerivative(u) + (1 - v) * alongTopCurveDerivative(u);
    const Point<double, 3> ruling = alongBottomCurve(u) - alongTopCurve(u);
    const Point<double, 3> normal = normalized(cross(ruling, alongArcs));
    const Point<double, 3> center = topCenter + v * (bottomCenter - topCenter);
    return dot(point - center, normal) > 0 ? normal : normal * -1.0;
}
