/// \file
/// Which of many triangles is nearest to a position.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "TriangleDistance.h"

namespace quarn {

/// A tree of boxes around triangles. Its const operations may run on any number of threads at once.
class TriangleTree {
public:
    /// The index of no triangle.
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

    /// A triangle by its index in the tree, which is not that of the list that the tree was made of.
    struct Nearest {
        std::uint32_t index;
        double distance;
    };

    /// \pre at least one triangle, and fewer than kNone of them
    explicit TriangleTree(std::vector<Corners> triangleList);

    /// The nearest triangle, one of them where several are, but for rounding.
    /// \param hint index of a triangle that may be near, which makes the search faster; kNone for none
    [[nodiscard]] Nearest nearest(const Point<double, 3>& point, std::uint32_t hint = kNone) const;

    [[nodiscard]] const Corners& triangle(std::uint32_t index) const { return triangles[index]; }
    /// Distance to that triangle alone.
    [[nodiscard]] double distanceTo(std::uint32_t index, const Point<double, 3>& point) const;

private:
    struct Box {
        Point<double, 3> low;
        Point<double, 3> high;

        [[nodiscard]] double squaredDistance(const Point<double, 3>& point) const;
    };

    // Children stand behind their parent, the first of them next to it.
    struct Node {
        Box box;
        std::uint32_t first = 0;  // of a leaf: its first triangle; else its second child
        std::uint32_t count = 0;  // of a leaf: of triangles; else 0
    };

    class Builder;

    std::vector<Corners> triangles;
    std::vector<Node> nodes;
};

}  // namespace quarn
