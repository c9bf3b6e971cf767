/// \file
/// Bounds of the positions that triangles can contain.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "TriangleTrees.h"

namespace quarn::detail {

/// One box for each subtree of a centroid tree. No triangle of the subtree contains a position
/// outside of its box.
///
/// The boxes are conservative: they include the tolerances of testContainment() and rounding
/// errors. A triangle with inconsistent fields, or too large or too thin for the margins, has an
/// infinite box. A triangle that contains nothing has an empty box.
class ContainmentBounds {
public:
    /// Builds the boxes of a tree over \p triangles. Both must outlive every search and must not
    /// change.
    void build(const CentroidTree& tree, const std::vector<Triangle>& triangles);

    /// Calls `visit(slot)` for each triangle of the tree that may contain a position, in
    /// unspecified order.
    template <class Visit>
    void visitCandidates(const CentroidTree& tree, const Point<double, 3>& point, Visit&& visit) const;

private:
    // A box in single precision, rounded outwards. Half the memory means half the memory traffic,
    // which limits a search.
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

    // A ball around the triangle of the subtree's root. The squared radius is negative if the
    // triangle contains nothing.
    struct Ball {
        std::array<float, 3> center;
        float squaredRadius;

        [[nodiscard]] bool contains(const Point<double, 3>& point) const;
    };

    // The data that a search reads of a subtree, in one cache line.
    struct alignas(64) Node {
        Box left;
        Box right;
        Ball own;
    };

    // Sufficient for 2^63 values.
    static constexpr std::size_t kMaxDepth = 64;

    static Box boxOf(const Triangle& triangle);
    static Ball ballAround(const Box& box);

    Box whole = {};
    std::vector<Node> nodes;  // by slot; the box of a leaf is in its parent
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
    // The box of a leaf has been checked already, and the leaf has no subtrees.
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
