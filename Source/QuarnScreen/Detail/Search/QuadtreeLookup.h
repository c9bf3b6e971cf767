/// \file
/// Short ways into a quadtree.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QuarnScreen/RegionMap.h>

namespace quarn::detail {

/// A table of equal cells that leads to the node at which a descent from the root arrives: a search then reads one
/// place instead of ten nodes one after the other.
///
/// The borders of the cells are those that the descent itself computes, so that both agree on every point.
class QuadtreeLookup {
public:
    /// A node, and its rectangle where it is an inner one.
    struct Arrival {
        int node;
        RegionRect rect;
    };

    /// Makes the table of a tree, its root being the last node. There is none where the rectangle is too wide or too
    /// narrow to be cut into cells.
    void build(const std::vector<RegionNode>& nodes, const RegionRect& rootRect, int leafCount);

    void clear();

    /// Where the descent of a point passes or ends; none without a table, or beyond the root's rectangle.
    [[nodiscard]] std::optional<Arrival> find(double u, double v) const;

private:
    // The cells along one axis. A point on a border belongs to the cell below it.
    struct Axis {
        std::vector<double> borders;
        double cellsPerUnit = 0.0;

        void build(double low, double high, int depth);
        [[nodiscard]] bool canBeCut() const;
        [[nodiscard]] bool contains(double x) const { return x >= borders.front() && x <= borders.back(); }
        [[nodiscard]] std::size_t cellOf(double x) const;
    };

    void fill(const std::vector<RegionNode>& nodes, int index, int depth, std::size_t column,
              std::size_t row);

    Axis alongU;
    Axis alongV;
    int depth = 0;
    std::vector<int> cells;  // row by row
};

}  // namespace quarn::detail
