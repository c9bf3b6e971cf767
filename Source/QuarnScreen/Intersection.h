/// \file
/// Hits of rays.
#pragma once

#include <QuarnScreen/Point.h>

/// One position at which a ray meets a screen.
///
/// Analytic screens compute the position in double precision, meshes in single precision. A default
/// record is the position (0, 0, 0) without UV, triangle and side.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \code{.cpp}
/// const FlatScreen screen(4.0, 2.5);
/// const Intersection hit = screen.intersect({1.0, -3.0, 0.5}, {1.0, 0.0, 0.5}).first();
/// assert(hit.point[0] == 1.0 && hit.point[2] == 0.5);
/// assert(hit.normalSign == -1 && !hit.hasUV && hit.triangleIndex == -1);
/// \endcode
struct Intersection {
    Point<double, 3> point;  ///< Position of the hit, in the screen's unit and frame.
    bool hasUV = false;      ///< True if `uv` is valid; ruled surfaces and meshes set it.
    Point<double, 2> uv;     ///< UV of the hit; (0, 0) without one.
    int triangleIndex = -1;  ///< Index of the triangle in the mesh; -1 on analytic screens.
    int normalSign = 0;      ///< Sign of (ray direction . surface normal): 1, -1, or exactly 0.

    /// Compares field by field and exactly. A record that contains a NaN is unequal to itself.
    friend bool operator==(const Intersection& a, const Intersection& b) = default;
};
