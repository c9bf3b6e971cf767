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
        double distance;
    };

    /// Builds the tree.
    /// \pre at least one triangle and fewer than kNone, with finite coordinates
    explicit TriangleTree(std::vector<TriangleCorners> triangleList);

    /// Finds the nearest triangle, up to rounding; one of them if several are equally near.
    /// \param hint index of a triangle that may be near, which speeds up the search; kNone for none
    [[nodiscard]] Nearest nearest(const Point<double, 3>& point, std::uint32_t hint = kNone) const;

    [[nodiscard]] const TriangleCorners& triangle(std::uint32_t index) const { return triangles[index]; }
    /// Returns the distance to one triangle.
    [[nodiscard]] double distanceTo(std::uint32_t index, const Point<double, 3>& point) const;

private:
    // Children follow their parent, the first of them directly.
    struct Node {
        Bounds<3> bounds;
        std::uint32_t first = 0;  // first triangle of a leaf; second child of an inner node
        std::uint32_t count = 0;  // triangles of a leaf; 0 for an inner node
    };

    class Builder;

    std::vector<TriangleCorners> triangles;
    std::vector<Node> nodes;
};

}  // namespace quarn
