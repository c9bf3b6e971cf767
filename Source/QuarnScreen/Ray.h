/// \file
/// Rays.
#pragma once

#include <QuarnScreen/Point.h>

/// A line through two positions, in the screen's unit and frame.
///
/// The direction is `target - origin` and is not normalized. A parameter t along the ray counts in
/// lengths of the direction: t = 0 at the origin and t = 1 at the target. If both positions are
/// equal, the ray has no direction.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \code{.cpp}
/// const Ray ray{{0.0, -3.0, 0.0}, {0.0, -1.0, 0.0}};
/// const Point<double, 3> direction = ray.target - ray.origin;
/// assert(length(direction) == 2.0);
/// \endcode
struct Ray {
    Point<double, 3> origin;  ///< Start of the ray.
    Point<double, 3> target;  ///< A second position on the ray.
};
