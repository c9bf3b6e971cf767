/// \file
/// Search for the triangle with the nearest centroid.
#pragma once

#include <array>
#include <vector>

#include "Boxes/BoxTree.h"
#include "TriangleBuckets.h"

namespace quarn::detail {

/// Finds the nearest centroid as CentroidTree::findNearest() does, with the same result for every
/// position. It takes a fraction of the time where many centroids are about equally near.
///
/// Thread-safety: after build(), any number of threads may search at once.
class NearestCentroidSearch {
public:
    /// Builds the index of a tree. The tree must outlive every search.
    void build(const CentroidTree& tree, const TriangleBuckets& buckets);

    /// Returns the triangle with the nearest centroid; of equally near ones, the first that a
    /// search of the tree visits. Null if no squared distance is below the largest double.
    /// \pre no centroid is NaN, and the position is finite
    [[nodiscard]] const Triangle* find(const CentroidTree& tree, const TriangleBuckets& buckets,
                                       const Point<double, 3>& point) const;

private:
    // Coordinates of the centroids of a group, and infinity in lanes without a slot.
    struct Centroids {
        std::array<std::array<double, kLanes>, 3> coordinates;

        [[nodiscard]] std::array<double, kLanes> squaredDistances(const Point<double, 3>& point) const;
    };

    std::vector<Centroids> groups;
    BoxTree boxes;                // of the centroids of each bucket
    bool haveBoxesEffect = true;  // false if rounding made most of them too large
};

}  // namespace quarn::detail
