/// \file
/// Lookup table for a quadtree.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QuarnScreen/RegionMap.h>

namespace quarn::detail {

/// A uniform grid of cells. Each cell stores the node at which a descent from the root arrives, so
/// that a search reads one entry instead of ten dependent nodes.
///
/// The borders of the cells are those that the descent itself computes, so that both agree for
/// every point.
class RegionMapShortcut {
public:
    /// A node, and its rectangle if it is an inner node.
    struct Arrival {
        int node;
        RegionRect rect;
    };

    /// Builds the table of a tree whose root is the last node. There is no table if the rectangle
    /// is too wide or too narrow for cells.
    void build(const std::vector<RegionNode>& nodes, const RegionRect& rootRect, int leafCount);

    void clear();

    /// Returns the node that the descent of a point visits at the depth of the table, or the leaf
    /// at which it ends before.
    /// \return nothing without a table, or for a point outside of the root's rectangle
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
