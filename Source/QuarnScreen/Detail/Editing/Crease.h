/// \file
/// Creases between triangles.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// An edge that two triangles share, by its two ends.
struct Crease {
    Point<double, 3> first;
    Point<double, 3> second;
};

/// Returns the shared edge of the two triangles whose normals differ most; of equal ones, that of
/// the first pair. Two zero positions if no pair shares an edge.
[[nodiscard]] Crease sharpestCrease(const std::vector<const Triangle*>& triangles);

/// Returns the position on the crease that is nearest to a point; the first end for a crease
/// without length.
[[nodiscard]] Point<double, 3> closestOn(const Crease& crease, const Point<double, 3>& point);

}  // namespace quarn::detail
