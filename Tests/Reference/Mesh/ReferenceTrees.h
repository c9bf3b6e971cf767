/// \file
/// The k-d trees of a mesh: triangles by their centroids, in space and in UV.
#pragma once

#include <cstddef>
#include <vector>

#include <QuarnScreen/Triangle.h>

#include "Reference/Mesh/ReferenceKDTree.h"

namespace quarn::test {

struct ReferenceCentroidKey {
    double operator()(const Triangle* triangle, int axis) const {
        return triangle->centroid[static_cast<std::size_t>(axis)];
    }
};
struct ReferenceUVCentroidKey {
    double operator()(const Triangle* triangle, int axis) const {
        return triangle->uvCentroid[static_cast<std::size_t>(axis)];
    }
};
using ReferenceCentroidTree = ReferenceKDTree<const Triangle*, 3, ReferenceCentroidKey>;
using ReferenceUVTree = ReferenceKDTree<const Triangle*, 2, ReferenceUVCentroidKey>;

[[nodiscard]] inline std::vector<const Triangle*> pointersTo(const std::vector<Triangle>& triangles) {
    std::vector<const Triangle*> pointers;
    pointers.reserve(triangles.size());
    for (const Triangle& triangle : triangles) pointers.push_back(&triangle);
    return pointers;
}

}  // namespace quarn::test
