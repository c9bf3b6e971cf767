/// \file
/// Search trees over the centroids of triangles.
#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

#include <Common/PointKDTree.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Returns a coordinate of a triangle's stored centroid.
struct CentroidOf {
    double operator()(const Triangle* triangle, int axis) const {
        return triangle->centroid[static_cast<std::size_t>(axis)];
    }
};

/// Returns a coordinate of a triangle's stored centroid in UV.
struct UVCentroidOf {
    double operator()(const Triangle* triangle, int axis) const {
        return triangle->uvCentroid[static_cast<std::size_t>(axis)];
    }
};

using CentroidTree = PointKDTree<const Triangle*, 3, CentroidOf>;
using UVTree = PointKDTree<const Triangle*, 2, UVCentroidOf>;

/// Returns the depth of the first level of a tree whose subtrees have at most \p maxSize nodes.
[[nodiscard]] inline std::size_t levelOfSubtrees(std::size_t treeSize, std::size_t maxSize) {
    std::size_t level = 0;
    // The left subtree is never smaller than the right one.
    for (std::size_t largest = treeSize; largest > maxSize; largest /= 2) ++level;
    return level;
}

/// Builds a tree over all triangles of a mesh.
template <class Tree>
void buildOver(Tree& tree, const std::vector<Triangle>& triangles) {
    std::vector<const Triangle*> pointers(triangles.size());
    std::iota(pointers.begin(), pointers.end(), triangles.data());
    tree.build(pointers.begin(), pointers.end());
}

}  // namespace quarn::detail
