#include "TriangleTree.h"

#include <algorithm>
#include <cmath>

#include <Common/Detail/Assert.h>
#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint32_t kLeafSize = 4;
// Maximum depth of the search; halving a 32-bit number of triangles needs fewer levels.
constexpr std::size_t kMaxDepth = 40;
// Maximum number of triangles of a node with a slab; nodes of more triangles are too curved.
constexpr std::uint32_t kMaxSlabTriangles = 4096;
// Rounding of the distance from a slab, as a fraction of the coordinates relative to the box.
constexpr double kSlabMargin = 1e-14;

double sumOfMagnitudes(const Point<double, 3>& point) {
    return std::abs(point[0]) + std::abs(point[1]) + std::abs(point[2]);
}

}  // namespace

// Halves the triangles by the centers of their boxes, along the axis of the largest extent.
class TriangleTree::Builder {
public:
    Builder(const std::vector<TriangleCorners>& triangleList, std::vector<Node>& nodeList)
        : triangles(triangleList), nodes(nodeList), order(triangleList.size()), centers(triangleList.size()) {
        for (std::uint32_t i = 0; i < order.size(); ++i) {
            order[i] = i;
            const Bounds<3> bounds = boundsOf(triangles[i]);
            centers[i] = bounds.min + bounds.max;
        }
        build(0, static_cast<std::uint32_t>(order.size()));
    }

    [[nodiscard]] const std::vector<std::uint32_t>& triangleOrder() const { return order; }

private:
    static Bounds<3> boundsOf(const TriangleCorners& triangle) {
        Bounds<3> bounds(triangle[0]);
        bounds.include(triangle[1]);
        bounds.include(triangle[2]);
        return bounds;
    }

    [[nodiscard]] Bounds<3> boundsOf(std::uint32_t begin, std::uint32_t end) const {
        Bounds<3> bounds = boundsOf(triangles[order[begin]]);
        for (std::uint32_t i = begin + 1; i < end; ++i)
            for (const Point<double, 3>& corner : triangles[order[i]]) bounds.include(corner);
        return bounds;
    }

    // Returns a slab along the mean normal.
    [[nodiscard]] Slab slabOf(std::uint32_t begin, std::uint32_t end, const Bounds<3>& bounds) const {
        Point<double, 3> sum;
        for (std::uint32_t i = begin; i < end; ++i) {
            const auto& [a, b, c] = triangles[order[i]];
            sum = sum + cross(b - a, c - a);
        }
        const double size = length(sum);
        if (!(size > 0.0) || !std::isfinite(size)) return {};
        Slab slab{.normal = sum / size, .low = kInfinity, .high = -kInfinity};
        for (std::uint32_t i = begin; i < end; ++i)
            for (const Point<double, 3>& corner : triangles[order[i]]) {
                const double height = dot(slab.normal, corner - bounds.min);
                slab.low = std::min(slab.low, height);
                slab.high = std::max(slab.high, height);
            }
        const double margin = kSlabMargin * sumOfMagnitudes(bounds.extent());
        slab.low -= margin;
        slab.high += margin;
        return slab;
    }

    [[nodiscard]] std::size_t widestAxis(std::uint32_t begin, std::uint32_t end) const {
        Bounds<3> bounds(centers[order[begin]]);
        for (std::uint32_t i = begin + 1; i < end; ++i) bounds.include(centers[order[i]]);
        const Point<double, 3> size = bounds.extent();
        std::size_t axis = 0;
        for (std::size_t i = 1; i < 3; ++i)
            if (size[i] > size[axis]) axis = i;
        return axis;
    }

    void build(std::uint32_t begin, std::uint32_t end) {
        const std::size_t index = nodes.size();
        const Bounds<3> bounds = boundsOf(begin, end);
        const bool hasSlab = end - begin <= kMaxSlabTriangles;
        nodes.push_back({.bounds = bounds,
                         .slab = hasSlab ? slabOf(begin, end, bounds) : Slab{},
                         .first = begin,
                         .count = end - begin});
        if (end - begin <= kLeafSize) return;
        const std::uint32_t middle = begin + (end - begin) / 2;
        const std::size_t axis = widestAxis(begin, end);
        // Indexes order equal centers, so that the tree is the same with every standard library.
        std::nth_element(order.begin() + begin, order.begin() + middle, order.begin() + end,
                         [&](std::uint32_t a, std::uint32_t b) {
                             const double first = centers[a][axis];
                             const double second = centers[b][axis];
                             return first != second ? first < second : a < b;
                         });
        build(begin, middle);
        nodes[index].first = static_cast<std::uint32_t>(nodes.size());
        nodes[index].count = 0;
        build(middle, end);
    }

    const std::vector<TriangleCorners>& triangles;
    std::vector<Node>& nodes;
    std::vector<std::uint32_t> order;
    std::vector<Point<double, 3>> centers;  // twice those of the boxes
};

TriangleTree::TriangleTree(std::vector<TriangleCorners> triangleList) {
    QUARN_ASSERT(!triangleList.empty() && triangleList.size() < kNone);
    QUARN_ASSERT(std::all_of(triangleList.begin(), triangleList.end(), [](const TriangleCorners& corners) {
        return isFinite(corners[0]) && isFinite(corners[1]) && isFinite(corners[2]);
    }));
    const Builder builder(triangleList, nodes);
    triangles.reserve(triangleList.size());
    for (const std::uint32_t i : builder.triangleOrder()) triangles.push_back(triangleList[i]);
}

double TriangleTree::distanceTo(std::uint32_t index, const Point<double, 3>& point) const {
    return std::sqrt(squaredDistance(point, triangles[index]));
}

// Returns a lower bound of the squared distances to the triangles of a node. Without the margins,
// rounding could place the bound farther away than a triangle.
double TriangleTree::minSquaredDistance(const Point<double, 3>& point, const Node& node) {
    constexpr double kBoxMargin = 1.0 - 1e-12;
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double outside =
            std::max(std::max(node.bounds.min[i] - point[i], point[i] - node.bounds.max[i]), 0.0);
        sum += outside * outside;
    }
    const Point<double, 3> offset = point - node.bounds.min;
    const double height = dot(node.slab.normal, offset);
    const double beyond = std::max(node.slab.low - height, height - node.slab.high);
    const double fromSlab = std::max(beyond - kSlabMargin * sumOfMagnitudes(offset), 0.0);
    return std::max(sum, fromSlab * fromSlab) * kBoxMargin;
}

// A search by depth, the nearer child first.
class TriangleTree::Search {
public:
    Search(const TriangleTree& searchedTree, const Point<double, 3>& searchPoint,
           const SearchLimits& searchLimits)
        : tree(searchedTree), point(searchPoint), limits(searchLimits) {}

    Nearest run(std::uint32_t first) {
        take(first);
        push(0, minSquaredDistance(point, tree.nodes[0]));
        while (count > 0) {
            const Waiting next = waiting[--count];
            if (isNear(next.squaredDistance)) visit(next.node);
        }
        const double distance = std::sqrt(minSquared);
        return {best, distance, std::min(distance, std::sqrt(skippedSquared))};
    }

    [[nodiscard]] std::uint64_t visitCount() const { return visits; }

private:
    struct Waiting {
        std::uint32_t node;
        double squaredDistance;
    };

    // True if a node may have a triangle that is nearer by more than the tolerance.
    bool isNear(double squared) {
        if (squared < reach) return true;
        skippedSquared = std::min(skippedSquared, squared);
        return false;
    }

    void push(std::uint32_t node, double squared) {
        if (isNear(squared)) waiting[count++] = {node, squared};
    }

    void take(std::uint32_t index) {
        const double squared = squaredDistance(point, tree.triangles[index]);
        if (!(squared < minSquared)) return;
        minSquared = squared;
        best = index;
        updateReach();
    }

    void updateReach() {
        if (visits >= limits.maxVisits) {
            reach = 0.0;
        } else if (visits >= limits.exactVisits) {
            const double distance = std::sqrt(minSquared);
            const double tolerance = std::max(limits.tolerance, limits.relativeTolerance * distance);
            const double farthest = std::max(distance - tolerance, 0.0);
            reach = farthest * farthest;
        } else {
            reach = minSquared;
        }
    }

    void visit(std::uint32_t index) {
        const Node& node = tree.nodes[index];
        if (node.count > 0) {
            for (std::uint32_t i = node.first; i < node.first + node.count; ++i) take(i);
        } else {
            Waiting nearer{index + 1, minSquaredDistance(point, tree.nodes[index + 1])};
            Waiting farther{node.first, minSquaredDistance(point, tree.nodes[node.first])};
            if (farther.squaredDistance < nearer.squaredDistance) std::swap(nearer, farther);
            push(farther.node, farther.squaredDistance);
            push(nearer.node, nearer.squaredDistance);
        }
        ++visits;
        if (visits == limits.exactVisits || visits == limits.maxVisits) updateReach();
    }

    const TriangleTree& tree;
    const Point<double, 3>& point;
    const SearchLimits& limits;
    std::uint32_t best = 0;
    double minSquared = kInfinity;
    double reach = kInfinity;           // squared distance from which on nodes are skipped
    double skippedSquared = kInfinity;  // lower bound for the triangles of skipped nodes
    std::uint64_t visits = 0;
    std::array<Waiting, kMaxDepth> waiting = {};
    std::size_t count = 0;
};

TriangleTree::Nearest TriangleTree::nearest(const Point<double, 3>& point, std::uint32_t hint) const {
    std::uint64_t visits = 0;
    return nearest(point, hint, {}, visits);
}

TriangleTree::Nearest TriangleTree::nearest(const Point<double, 3>& point, std::uint32_t hint,
                                            const SearchLimits& limits, std::uint64_t& visits) const {
    Search search(*this, point, limits);
    const Nearest result = search.run(hint == kNone ? 0 : hint);
    visits += search.visitCount();
    return result;
}

}  // namespace quarn
