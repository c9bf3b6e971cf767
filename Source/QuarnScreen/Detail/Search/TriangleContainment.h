/// \file
/// Which triangle contains a position.
#pragma once

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Greatest distance of a position from the plane of the triangle that contains it, in the mesh's unit: the rounding of
/// positions that were computed in double precision, and not that of the ray tracer's single precision.
inline constexpr double kContainmentDistance = 1e-5;

/// What the test of a triangle against a position found.
struct Containment {
    bool contains = false;
    double a = 0.0;  ///< Parameters of the position's foot; 0 where the foot lies outside of the triangle.
    double b = 0.0;
};

/// Whether a triangle contains a position: its foot lies in the triangle, at most kContainmentDistance away.
[[nodiscard]] Containment testContainment(const Triangle& triangle, const Point<double, 3>& point);

}  // namespace quarn::detail
