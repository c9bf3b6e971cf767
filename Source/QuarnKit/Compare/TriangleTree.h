/// \file
/// Search for the triangle nearest to a position.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include <QuarnKit/Base/Bounds.h>

#include "TriangleDistance.h"

namespace quarn {

/// A bounding volume hierarchy of triangles. Const operations are safe on several threads.
class TriangleTree {
public:
    /// Index that means no triangle.
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

    /// A triangle by its index in the tree, which differs from its index in the list.
    struct Nearest {
        std::uint32_t index;
        double distance;     ///< To this triangle.
        double minDistance;  ///< Lower bound for all triangles; equal to `distance` after an exact search.
    };

    /// Limits of a search. The defaults make it exact.
    struct SearchLimits {
        /// Number of nodes to visit before the tolerances apply.
        std::uint64_t exactVisits = std::numeric_limits<std::uint64_t>::max();
        /// Number of nodes after which the search ends.
        std::uint64_t maxVisits = std::numeric_limits<std::uint64_t>::max();
        double tolerance = 0.0;          ///< By which the distance may exceed the minimum.
        double relativeTolerance = 0.0;  ///< The same as a fraction of the distance; the larger one applies.
    };

    /// Builds the tree.
    /// \pre at least one triangle and fewer than kNone, with finite coordinates
    explicit TriangleTree(std::vector<TriangleCorners> triangleList);

    /// Finds the nearest triangle, up to rounding; one of them if several are equally near.
    /// \param hint index of a triangle that may be near, which speeds up the search; kNone for none
    [[nodiscard]] Nearest nearest(const Point<double, 3>& point, std::uint32_t hint = kNone) const;

    /// Finds a triangle that is as near as \p limits require. From a position that is about equally
    /// far from all triangles, an exact search would visit them all.
    /// \param visits the number of visited nodes is added to it
    [[nodiscard]] Nearest nearest(const Point<double, 3>& point, std::uint32_t hint,
                                  const SearchLimits& limits, std::uint64_t& visits) const;

    [[nodiscard]] const TriangleCorners& triangle(std::uint32_t index) const { return triangles[index]; }
    /// Returns the distance to one triangle.
    [[nodiscard]] double distanceTo(std::uint32_t index, const Point<double, 3>& point) const;

private:
    // Two parallel planes around some triangles. Those of a smooth surface are much closer to each
    // other than the sides of a bounding box. Coordinates are relative to the minimum of the box.
    struct Slab {
        Point<double, 3> normal;  // unit length; zero if the node has no slab
        double low = 0.0;
        double high = 0.0;
    };

    // Children follow their parent, the first of them directly.
    struct Node {
        Bounds<3> bounds;
        Slab slab;
        std::uint32_t first = 0;  // first triangle of a leaf; second child of an inner node
        std::uint32_t count = 0;  // triangles of a leaf; 0 for an inner node
    };

    class Builder;
    class Search;

    [[nodiscard]] static double minSquaredDistance(const Point<double, 3>& point, const Node& node);

    std::vector<TriangleCorners> triangles;
    std::vector<Node> nodes;
};

}  // namespace quarn
