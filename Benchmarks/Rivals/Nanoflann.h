/// \file
/// The search for the nearest centroid by the library nanoflann.
#pragma once

#include <array>
#include <cstddef>
#include <nanoflann.hpp>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::bench {

/// A k-d tree over copies of the centroids, which lie side by side.
class NanoflannTree {
public:
    explicit NanoflannTree(const std::vector<Triangle>& triangles) : NanoflannTree(Cloud(triangles)) {}
    NanoflannTree(const NanoflannTree&) = delete;
    NanoflannTree& operator=(const NanoflannTree&) = delete;

    /// Index of the triangle.
    [[nodiscard]] std::size_t findNearest(const Point<double, 3>& point) const {
        const std::array<double, 3> position = {point[0], point[1], point[2]};
        std::size_t nearest = 0;
        double squared = 0.0;
        index.knnSearch(position.data(), 1, &nearest, &squared);
        return nearest;
    }

private:
    struct Cloud {
        explicit Cloud(const std::vector<Triangle>& triangles) {
            centroids.reserve(triangles.size());
            for (const Triangle& triangle : triangles)
                centroids.push_back({triangle.centroid[0], triangle.centroid[1], triangle.centroid[2]});
        }

        // Names that nanoflann requires.
        [[nodiscard]] std::size_t kdtree_get_point_count() const { return centroids.size(); }
        [[nodiscard]] double kdtree_get_pt(std::size_t i, std::size_t axis) const {
            return centroids[i][axis];
        }
        template <class Box>
        bool kdtree_get_bbox(Box& /*box*/) const {
            return false;
        }

        std::vector<std::array<double, 3>> centroids;
    };
    using Index = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 3,
                                                      std::size_t>;

    explicit NanoflannTree(Cloud&& points)
        : cloud(std::move(points)), index(3, cloud, nanoflann::KDTreeSingleIndexAdaptorParams()) {}

    Cloud cloud;
    Index index;
};

}  // namespace quarn::bench
