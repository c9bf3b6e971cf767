/// \file
/// Rays.
#pragma once

#include <QuarnScreen/Point.h>

/// A line through two positions.
///
/// The direction is `target - origin`, which is not normalised: a parameter t along the ray counts in units
/// of that difference.
struct Ray {
    Point<double, 3> origin;  ///< Where the ray starts.
    Point<double, 3> target;  ///< A second position on the ray.
};
