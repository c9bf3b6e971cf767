/// \file
/// Hits of rays.
#pragma once

#include <QuarnScreen/Point.h>

/// One place where a ray meets a screen.
struct Intersection {
    Point<double, 3> point;  ///< Position of the hit.
    bool hasUV = false;      ///< Whether `uv` means something; ruled surfaces and meshes set it.
    Point<double, 2> uv;     ///< UV of the hit.
    int triangleIndex = -1;  ///< Index of the triangle in the mesh; -1 on every other shape.
    int normalSign = 0;      ///< Sign of (ray direction . surface normal): 1, -1, or 0 for exactly zero.

    /// Field by field and exactly; a record that holds a NaN is unequal to itself.
    friend bool operator==(const Intersection& a, const Intersection& b) = default;
};
