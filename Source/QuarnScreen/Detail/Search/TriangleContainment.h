/// \file
/// Which triangle holds a position.
#pragma once

#include <QuarnScreen/Triangle.h>

namespace quarn {

/// Greatest distance of a position from the plane of the triangle that holds it, in the mesh's unit: the rounding of
/// positions that were computed in double precision, and not that of the ray tracer's single precision.
inline constexpr double kHoldingDistance = 1e-5;

/// What the test of a triangle against a position found.
struct Holding {
    bool holds = false;
    double a = 0.0;  ///< Parameters of the position's foot; 0 where the foot lies outside of the triangle.
    double b = 0.0;
};

/// Whether a triangle holds a position: its foot lies in the triangle, at most kHoldingDistance away.
[[nodiscard]] Holding testHolding(const Triangle& triangle, const Point<double, 3>& point);

}  // namespace quarn
