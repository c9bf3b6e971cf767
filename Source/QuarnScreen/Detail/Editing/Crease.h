/// \file
/// Creases between triangles.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// The two ends of an edge that two triangles share.
struct Crease {
    Point<double, 3> first;
    Point<double, 3> second;
};

/// The edge shared by two of the triangles whose normals differ most; of equal ones that of the earliest pair. Two
/// zero positions where no pair shares an edge.
[[nodiscard]] Crease sharpestCrease(const std::vector<const Triangle*>& triangles);

/// The position of the crease nearest to a point; its first end where the crease has no length.
[[nodiscard]] Point<double, 3> closestOn(const Crease& crease, const Point<double, 3>& point);

}  // namespace quarn::detail
