/// \file
/// Cylinders and spheres for tests that hold for both, each beside its reference.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "Reference/Shapes/ReferenceCylinder.h"
#include "Reference/Shapes/ReferenceSphere.h"
#include "Support/WildNumbers.h"

namespace quarn::test {

/// Calls fill(number) for each parameter in the order of the records.
template <class Fill>
void fillParameters(ReferenceCylinder& r, Fill fill) {
    for (double* number : {&r.cx, &r.cy, &r.cz, &r.radius, &r.minTheta, &r.maxTheta, &r.height})
        *number = fill();
}
template <class Fill>
void fillParameters(ReferenceSphere& r, Fill fill) {
    for (double* number : {&r.cx, &r.cy, &r.cz, &r.radius, &r.minTheta, &r.maxTheta, &r.minPhi, &r.maxPhi})
        *number = fill();
}

struct CylinderCase {
    using Screen = CylinderScreen;
    using Params = CylinderScreenParams;
    using Reference = ReferenceCylinder;
    static constexpr std::size_t kParameters = 7;

    static Screen screenOf(const Reference& r) {
        return {Point3(r.cx, r.cy, r.cz), r.radius, r.minTheta, r.maxTheta, r.height};
    }
    static bool endsSectionTest(const Reference& r) { return r.endsSectionTest(); }
    static void drawExtent(Reference& r, Rng& rng) {
        r.height = rng.integer(0, 15) == 0 ? 0.0 : rng.uniform(-1.0, 8.0);
    }
};

struct SphereCase {
    using Screen = SphericalScreen;
    using Params = SphericalScreenParams;
    using Reference = ReferenceSphere;
    static constexpr std::size_t kParameters = 8;

    static Screen screenOf(const Reference& r) {
        return {Point3(r.cx, r.cy, r.cz), r.radius, r.minTheta, r.maxTheta, r.minPhi, r.maxPhi};
    }
    static bool endsSectionTest(const Reference&) { return true; }
    static void drawExtent(Reference& r, Rng& rng) {
        r.minPhi = rng.uniform(-2.0, 1.0);
        r.maxPhi = r.minPhi + rng.uniform(-0.5, 3.0);
    }
};

/// A screen whose parameters are of any kind, except those with which a section test or a boundary
/// takes too long.
template <class Case>
typename Case::Reference wildReference(Rng& rng) {
    constexpr int kMaxSamples = 500;
    for (;;) {
        typename Case::Reference r;
        fillParameters(r, [&] { return wildNumber(rng); });
        if (Case::endsSectionTest(r) && r.outlineCount() <= kMaxSamples) return r;
    }
}

/// A screen of usual sizes. Its limits may be reversed and reach beyond a full turn; half of the
/// centers lie off the origin; some radii are zero or negative.
template <class Case>
typename Case::Reference usualReference(Rng& rng) {
    typename Case::Reference r;
    if (rng.coin()) {
        r.cx = rng.uniform(-3.0, 3.0);
        r.cy = rng.uniform(-3.0, 3.0);
        r.cz = rng.uniform(-3.0, 3.0);
    }
    r.radius = rng.uniform(0.1, 9.0);
    if (const int kind = rng.integer(0, 31); kind < 2) r.radius = kind == 0 ? 0.0 : -r.radius;
    r.minTheta = rng.uniform(-8.0, 8.0);
    r.maxTheta = r.minTheta + rng.uniform(-3.0, 8.0);
    Case::drawExtent(r, rng);
    return r;
}

/// A position on the surface, near it, or of any kind.
inline Point3 pointNear(const ReferenceCurved& r, Rng& rng) {
    Point3 point = r.positionAt(rng.uniform(-0.3, 1.3), rng.uniform(-0.3, 1.3));
    switch (rng.integer(0, 3)) {
        case 0:
            return wildPoint<3>(rng);
        case 1:
            for (std::size_t i = 0; i < 3; ++i) point[i] += rng.uniform(-1e-6, 1e-6);
            return point;
        default:
            return point;
    }
}

/// A UV around the unit square, or of any kind.
inline Point2 uvNear(Rng& rng) {
    if (rng.integer(0, 2) == 0) return wildPoint<2>(rng);
    const double u = rng.uniform(-0.5, 1.5);
    return {u, rng.uniform(-0.5, 1.5)};
}

/// Tests of this suite run for the cylinder and for the sphere.
template <class Case>
class CurvedTest : public ::testing::Test {
protected:
    using Reference = typename Case::Reference;
    using Screen = typename Case::Screen;

    /// Calls check(reference, screen, rng) on wild and usual screens in turn.
    template <class Check>
    static void forEachScreen(int cases, const Check& check) {
        for (int i = 0; i < cases && !HasFailure(); ++i) {
            Rng rng(i);
            SCOPED_TRACE(i);
            const Reference reference = i % 2 == 0 ? wildReference<Case>(rng) : usualReference<Case>(rng);
            check(reference, Case::screenOf(reference), rng);
        }
    }
    /// The same on usual screens alone.
    template <class Check>
    static void forEachUsualScreen(int cases, const Check& check) {
        for (int i = 0; i < cases && !HasFailure(); ++i) {
            Rng rng(i);
            SCOPED_TRACE(i);
            const Reference reference = usualReference<Case>(rng);
            check(reference, Case::screenOf(reference), rng);
        }
    }
};

using CurvedShapes = ::testing::Types<CylinderCase, SphereCase>;

/// Names the suites after their shapes.
struct CurvedNames {
    template <class Case>
    static std::string GetName(int) {
        return std::is_same_v<Case, CylinderCase> ? "Cylinder" : "Sphere";
    }
};

}  // namespace quarn::test
