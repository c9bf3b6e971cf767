/// \file
/// Extent of a mesh in space and in UV, and its center by the areas of its triangles.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::test {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

struct ReferenceBounds {
    ReferenceBounds() = default;
    explicit ReferenceBounds(const std::vector<Triangle>& triangles);

    [[nodiscard]] bool contains(const Point2& uv) const;

    Point3 min;
    Point3 max;
    Point2 uvMin;
    Point2 uvMax;
    Point3 centroid;
};

}  // namespace quarn::test
