#pragma once

#include <cmath>

#include <QuarnScreen/SphericalScreen.h>

#include "Support/Rng.h"

namespace quarn::test {

// Returns a section of any sphere, also one that overlaps itself or that cannot be drawn.
inline SphericalScreen randomSphere(Rng& rng) {
    const Point<double, 3> center = rng.spreadPoint(-100, 100);
    const double radius = std::abs(rng.spread(-100, 100));
    const double minTheta = rng.uniform(-9.0, 9.0);
    const double maxTheta = rng.uniform(-9.0, 9.0);
    const double minPhi = rng.uniform(-2.0, 2.0);
    return {center, radius, minTheta, maxTheta, minPhi, rng.uniform(-2.0, 2.0)};
}

}  // namespace quarn::test
