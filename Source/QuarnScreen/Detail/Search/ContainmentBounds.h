/// \file
/// Boxes that bound where triangles can hold a position.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "TriangleTrees.h"

namespace quarn::detail {

/// For each subtree of a centroid tree a box outside of which none of its triangles contains a position.
///
/// The boxes are conservative: they allow for the tolerances of testContainment() and for rounding. A triangle whose
/// stored fields do not fit together, or are too large or too thin for that, gets all of space; one that can hold
/// nothing gets none of it.
class ContainmentBounds {
public:
    /// Makes the boxes of a tree over \p triangles. Both must outlive every search, and not change.
    void build(const CentroidTree& tree, const std::vector<Triangle>& triangles);

    /// Calls `visit(slot)` for each triangle of the tree that may hold a position, in no particular order.
    template <class Visit>
    void visitCandidates(const CentroidTree& tree, const Point<double, 3>& point, Visit&& visit) const;

private:
    // Single precision, rounded outwards: half the memory, which is what a search waits for.
    struct Box {
        std::array<float, 3> lower;
        std::array<float, 3> upper;

        [[nodiscard]] bool contains(const Point<double, 3>& point) const;
        void include(const Box& other);
    };
    static constexpr float kInfinity = std::numeric_limits<float>::infinity();
    static constexpr Box kEverywhere = {{-kInfinity, -kInfinity, -kInfinity},
                                        {kInfinity, kInfinity, kInfinity}};
    static constexpr Box kNowhere = {{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}};

    // A ball around the root's own triangle; its squared radius is below 0 where the triangle contains nothing.
    struct Ball {
        std::array<float, 3> center;
        float squaredRadius;

        [[nodiscard]] bool contains(const Point<double, 3>& point) const;
    };

    // All that a search reads of a subtree, in one cache line.
    struct alignas(64) Node {
        Box left;
        Box right;
        Ball own;
    };

    // A tree of 2^63 values is less deep.
    static constexpr std::size_t kMaxDepth = 64;

    static Box boxOf(const Triangle& triangle);
    static Ball ballAround(const Box& box);

    Box whole = {};
    std::vector<Node> nodes;  // by slot; a leaf's box is its parent's affair
};

inline bool ContainmentBounds::Box::contains(const Point<double, 3>& point) const {
    bool isInside = true;
    for (std::size_t i = 0; i < 3; ++i)
        isInside &= static_cast<double>(lower[i]) <= point[i] && point[i] <= static_cast<double>(upper[i]);
    return isInside;
}

inline bool ContainmentBounds::Ball::contains(const Point<double, 3>& point) const {
    double squared = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double difference = point[i] - static_cast<double>(center[i]);
        squared += difference * difference;
    }
    return squared <= static_cast<double>(squaredRadius);
}

template <class Visit>
void ContainmentBounds::visitCandidates(const CentroidTree& tree, const Point<double, 3>& point,
                                        Visit&& visit) const {
    if (nodes.empty() || !whole.contains(point)) return;
    std::array<CentroidTree::Subtree, kMaxDepth> waiting;
    std::size_t waitingCount = 0;
    waiting[waitingCount++] = tree.whole();
    // A leaf needs no more than its box.
    const auto enter = [&](const CentroidTree::Subtree& child) {
        if (child.size == 1)
            visit(child.slot);
        else
            waiting[waitingCount++] = child;
    };
    while (waitingCount > 0) {
        const CentroidTree::Subtree subtree = waiting[--waitingCount];
        if (subtree.size >= 8) {
            __builtin_prefetch(&nodes[subtree.left().right().slot]);
            __builtin_prefetch(&nodes[subtree.right().left().slot]);
            __builtin_prefetch(&nodes[subtree.right().right().slot]);
        }
        const Node& node = nodes[subtree.slot];
        if (node.own.contains(point)) visit(subtree.slot);
        if (node.right.contains(point)) enter(subtree.right());
        if (node.left.contains(point)) enter(subtree.left());
    }
}

}  // namespace quarn::detail
