/// \file
/// A tree of boxes.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "FourBoxes.h"

namespace quarn::detail {

/// A tree over a sequence of boxes, in which a node bounds four consecutive boxes or nodes. A
/// search is fast if neighbors in the sequence are neighbors in space.
///
/// Thread-safety: after build(), any number of threads may search at once.
class BoxTree {
public:
    /// Rebuilds the tree over a sequence of boxes. O(n).
    void build(const std::vector<FloatBox>& boxes);

    /// Calls `visit(index)` for each box that contains a position, in unspecified order.
    template <class Visit>
    void visitContaining(const FloatPosition& position, Visit&& visit) const;

    /// Calls `visit(index)` for the boxes that are not farther from a finite position than a limit,
    /// the nearer one of two neighbors first. Reads the squared limit again after each call, which
    /// may reduce it.
    template <class Visit>
    void visitNear(const Point<double, 3>& point, const double& squaredLimit, Visit&& visit) const {
        if (levelCount > 0) visitNear(point, squaredLimit, visit, 0, 0);
    }

private:
    template <class Visit>
    void visitNear(const Point<double, 3>& point, const double& squaredLimit, Visit& visit, std::size_t level,
                   std::size_t index) const;

    // Sufficient for 4^16 boxes.
    static constexpr std::size_t kMaxLevels = 16;
    // In a search, three entries of each level wait for the fourth, or none.
    static constexpr std::size_t kMaxWaiting = (kLanes - 1) * kMaxLevels + 1;

    struct Waiting {
        std::uint32_t level;
        std::uint32_t index;
    };

    // The first level is the root. The entries below node i of a level are 4 i to 4 i + 3 of the
    // next level, or of the boxes.
    std::vector<FourBoxes> nodes;
    std::array<std::size_t, kMaxLevels> starts{};
    std::size_t levelCount = 0;
};

template <class Visit>
void BoxTree::visitContaining(const FloatPosition& position, Visit&& visit) const {
    if (levelCount == 0) return;
    std::array<Waiting, kMaxWaiting> waiting = {};
    std::size_t waitingCount = 0;
    waiting[waitingCount++] = {0, 0};
    while (waitingCount > 0) {
        const Waiting node = waiting[--waitingCount];
        nodes[starts[node.level] + node.index].lanesAround(position).forEach([&](std::size_t lane) {
            const auto below = static_cast<std::uint32_t>(node.index * kLanes + lane);
            if (node.level + 1 == levelCount)
                visit(below);
            else
                waiting[waitingCount++] = {node.level + 1, below};
        });
    }
}

template <class Visit>
void BoxTree::visitNear(const Point<double, 3>& point, const double& squaredLimit, Visit& visit,
                        std::size_t level, std::size_t index) const {
    std::array<double, kLanes> squared = nodes[starts[level] + index].squaredDistances(point);
    for (std::size_t count = 0; count < kLanes; ++count) {
        const auto nearest = std::min_element(squared.begin(), squared.end());
        if (!(*nearest <= squaredLimit)) return;
        *nearest = std::numeric_limits<double>::infinity();
        const std::size_t below = index * kLanes + static_cast<std::size_t>(nearest - squared.begin());
        if (level + 1 == levelCount)
            visit(below);
        else
            visitNear(point, squaredLimit, visit, level + 1, below);
    }
}

}  // namespace quarn::detail
