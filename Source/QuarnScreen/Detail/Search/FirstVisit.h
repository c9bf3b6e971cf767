/// \file
/// The first node that a search of a centroid tree visits.
#pragma once

#include <cstddef>
#include <vector>

#include "TriangleTrees.h"

namespace quarn::detail {

/// The splitting planes of the upper levels of a centroid tree, side by side. In the tree itself,
/// each level is a wait for memory.
///
/// Thread-safety: after build(), any number of threads may search at once.
class FirstVisit {
public:
    /// Copies the splitting planes of a tree.
    void build(const CentroidTree& tree);

    /// Returns the slot of the value that a search of the tree from a position visits first.
    /// \pre the tree is that of build(), and it is not empty
    [[nodiscard]] std::size_t slotOf(const CentroidTree& tree, const Point<double, 3>& point) const {
        return descend(tree, point, [](std::size_t) {});
    }

    /// Prefetches the nodes that a search of the tree from a position reads before its first visit.
    /// \pre as for slotOf()
    void prefetchPath(const CentroidTree& tree, const Point<double, 3>& point) const {
        (void)descend(tree, point, [&](std::size_t slot) { __builtin_prefetch(&tree.keyAt(slot)); });
    }

private:
    [[nodiscard]] static std::size_t nextAxis(std::size_t axis) { return axis == 2 ? 0 : axis + 1; }
    template <class Pass>
    [[nodiscard]] std::size_t descend(const CentroidTree& tree, const Point<double, 3>& point,
                                      Pass&& pass) const;

    // In the order of a heap: the children of plane i are 2 i + 1 and 2 i + 2.
    std::vector<double> planes;
    std::size_t levelCount = 0;
};

// Calls `pass(slot)` for each node whose plane is in `planes`. A search visits the near side of a
// node before the node. The comparisons are those of the search.
template <class Pass>
std::size_t FirstVisit::descend(const CentroidTree& tree, const Point<double, 3>& point, Pass&& pass) const {
    CentroidTree::Subtree subtree = tree.whole();
    std::size_t axis = 0;
    for (std::size_t plane = 0; plane < planes.size();) {
        pass(subtree.slot);
        const bool isLeft = planes[plane] > point[axis];
        subtree = isLeft ? subtree.left() : subtree.right();
        plane = 2 * plane + (isLeft ? 1 : 2);
        axis = nextAxis(axis);
    }
    for (;;) {
        const bool isLeft = tree.keyAt(subtree.slot)[axis] > point[axis];
        const CentroidTree::Subtree near = isLeft ? subtree.left() : subtree.right();
        if (near.size == 0) return subtree.slot;
        subtree = near;
        axis = nextAxis(axis);
    }
}

}  // namespace quarn::detail
