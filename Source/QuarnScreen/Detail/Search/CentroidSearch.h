/// \file
/// Which triangles of a mesh lie at a position.
#pragma once

#include <optional>
#include <vector>

#include "ContainmentBounds.h"
#include "TriangleTrees.h"

namespace quarn::detail {

/// Searches over the stored centroids of a mesh.
///
/// Thread-safety: after build() any number of threads may search at once.
class CentroidSearch {
public:
    /// Makes the indexes. The triangles must not move or change until the next build.
    void build(const std::vector<Triangle>& triangles);

    /// The tree over the centroids.
    [[nodiscard]] const CentroidTree& tree() const { return centroidTree; }

    /// Of the triangles that hold a position, that with the nearest centroid; null where there is none. Of equally
    /// near ones it is that which the walk of the tree meets first.
    [[nodiscard]] const Triangle* findContaining(const Point<double, 3>& point) const;

    /// UV at which the walk of the tree for findContaining() first meets a triangle that does not hold the position:
    /// that of the foot, or of corner 0 where the foot lies outside of the triangle. None where it meets none.
    [[nodiscard]] std::optional<Point<double, 2>> firstRejectedUV(const Point<double, 3>& point) const;

    /// Face normals of the \p count triangles with the nearest centroids, nearest first. Intended: \p direction is not
    /// read, where a reader would expect it to choose a side.
    [[nodiscard]] std::vector<Point<double, 3>> getNearestNormals(const Point<double, 3>& point,
                                                                  const Point<double, 3>& direction,
                                                                  int count) const;

private:
    [[nodiscard]] const Triangle* walkTree(const Point<double, 3>& point) const;

    CentroidTree centroidTree;
    ContainmentBounds boxes;
    bool isOrdered = true;  // no centroid holds a NaN, which would hide others from the walk
};

}  // namespace quarn::detail
