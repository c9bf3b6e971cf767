/// \file
/// Ruled screens for tests.
#pragma once

#include <cmath>
#include <numbers>

#include <QuarnScreen/RuledSurfaceScreen.h>

#include "Reference/Shapes/ReferenceRuled.h"
#include "Support/WildNumbers.h"

namespace quarn::test {

/// A ruled screen whose protected operations a test can call.
class OpenRuledScreen : public RuledSurfaceScreen {
public:
    using RuledSurfaceScreen::RuledSurfaceScreen;
    explicit OpenRuledScreen(const RuledSurfaceScreenParams& params)
        : RuledSurfaceScreen(params.width, params.height, params.minTheta, params.maxTheta, params.minPhi,
                             params.maxPhi) {}

    using RuledSurfaceScreen::alongBottomCurve;
    using RuledSurfaceScreen::alongBottomCurveDerivative;
    using RuledSurfaceScreen::alongTopCurve;
    using RuledSurfaceScreen::alongTopCurveDerivative;
    using RuledSurfaceScreen::isLeft;
    using RuledSurfaceScreen::reset;
};

/// Chord and height of 2, both arcs a quarter circle: radius sqrt(2), centers at y = -1, apex at y
/// = sqrt(2)
/// - 1.
inline constexpr RuledSurfaceScreenParams kQuarters{
    2.0, 2.0, -std::numbers::pi / 4, std::numbers::pi / 4, -std::numbers::pi / 4, std::numbers::pi / 4};
inline constexpr double kApexOfQuarters = std::numbers::sqrt2 - 1.0;

/// Whether the search for a ruling ends: for tiny arcs its parameters are so large that they cannot
/// come nearer to each other than its tolerance.
inline bool searchEnds(const RuledSurfaceScreenParams& params) {
    constexpr double kMinArc = 1e-8;
    const double topArc = params.maxTheta - params.minTheta;
    const double bottomArc = params.maxPhi - params.minPhi;
    const double larger = std::max(topArc, bottomArc);
    return larger == 0.0 || !(std::abs(larger) < kMinArc);
}

/// Ordinary screens: arcs from 0.2 to 2.8, chord and height from 0.5 to 10.
inline RuledSurfaceScreenParams ordinaryParams(Rng& rng) {
    const double width = rng.uniform(0.5, 10.0);
    const double height = rng.uniform(0.5, 10.0);
    const double minTheta = rng.uniform(-4.0, 4.0);
    const double maxTheta = minTheta + rng.uniform(0.2, 2.8);
    const double minPhi = rng.uniform(-4.0, 4.0);
    return {width, height, minTheta, maxTheta, minPhi, minPhi + rng.uniform(0.2, 2.8)};
}

/// Screens of every kind whose search ends: arcs above pi, reversed limits, zero and negative
/// sizes, extreme and special values.
inline RuledSurfaceScreenParams anyParams(Rng& rng) {
    RuledSurfaceScreenParams params = ordinaryParams(rng);
    switch (rng.integer(0, 7)) {
        case 0:
            params.minPhi = params.minTheta;
            params.maxPhi = params.maxTheta;
            break;
        case 1:
            params.maxTheta += 3.0;
            params.maxPhi += rng.uniform(0.0, 6.0);
            break;
        case 2:
            std::swap(params.minTheta, params.maxTheta);
            std::swap(params.minPhi, params.maxPhi);
            break;
        case 3:
            std::swap(params.minPhi, params.maxPhi);
            break;
        case 4:
            params.width = rng.coin() ? params.width : rng.integer(-1, 0);
            params.height = rng.integer(-1, 0);
            break;
        case 5:
            params.width = rng.spread(-60, 60);
            params.height = rng.spread(-60, 60);
            break;
        case 6:
            do
                params = {wildNumber(rng), wildNumber(rng), wildNumber(rng),
                          wildNumber(rng), wildNumber(rng), wildNumber(rng)};
            while (!searchEnds(params));
            break;
        default:
            break;
    }
    return params;
}

/// UV within and around the unit square, now and then on its edges.
inline double anyCoordinate(Rng& rng) {
    return rng.integer(0, 3) == 0 ? rng.integer(0, 2) * 0.5 : rng.uniform(-0.3, 1.3);
}

/// A position on the surface, near it, or anywhere.
inline Point3 anyPosition(Rng& rng, const ReferenceRuled& screen) {
    const double u = anyCoordinate(rng);
    Point3 p = screen.position(u, anyCoordinate(rng));
    const int kind = rng.integer(0, 9);
    if (kind == 0) return wildPoint<3>(rng);
    if (kind < 3) p[1] += rng.uniform(-0.05, 0.05);
    if (kind == 3) p = rng.point(-5.0, 5.0);
    return p;
}

/// A line through any position: mostly from the viewer's side, now and then any line.
struct Line {
    Point3 from;
    Point3 to;
};
inline Line anyLine(Rng& rng, const ReferenceRuled& screen) {
    const Point3 through = anyPosition(rng, screen);
    const int kind = rng.integer(0, 9);
    if (kind == 0) return {through, wildPoint<3>(rng)};
    const double x = kind < 4 ? 0.0 : rng.uniform(-3.0, 3.0);
    const double y = kind == 9 ? rng.uniform(-9.0, 9.0) : rng.uniform(0.5, 9.0);
    const double z = kind < 4 ? 0.0 : rng.uniform(-3.0, 3.0);
    const double before = rng.coin() ? 1.0 : rng.uniform(-1.0, 3.0);
    const double after = rng.uniform(0.1, 2.0);
    return {Point3(through[0] - before * x, through[1] - before * y, through[2] - before * z),
            Point3(through[0] + after * x, through[1] + after * y, through[2] + after * z)};
}

}  // namespace quarn::test
