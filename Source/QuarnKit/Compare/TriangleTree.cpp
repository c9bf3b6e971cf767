#include "TriangleTree.h"

#include <algorithm>
#include <cmath>

#include <Common/Detail/Assert.h>
#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

constexpr std::uint32_t kLeafSize = 4;
// Maximum depth of the search; halving a 32-bit number of triangles needs fewer levels.
constexpr std::size_t kMaxDepth = 40;

// Returns a lower bound of the squared distances to the triangles in the box. Without the margin,
// rounding could place the box farther away than a triangle in it.
double minSquaredDistance(const Point<double, 3>& point, const Bounds<3>& box) {
    constexpr double kBoxMargin = 1.0 - 1e-12;
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double outside = std::max(std::max(box.min[i] - point[i], point[i] - box.max[i]), 0.0);
        sum += outside * outside;
    }
    return sum * kBoxMargin;
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
        nodes.push_back({.bounds = boundsOf(begin, end), .first = begin, .count = end - begin});
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

TriangleTree::Nearest TriangleTree::nearest(const Point<double, 3>& point, std::uint32_t hint) const {
    struct Waiting {
        std::uint32_t node;
        double squaredDistance;
    };
    std::uint32_t best = hint == kNone ? 0 : hint;
    double minSquared = squaredDistance(point, triangles[best]);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): filled as it grows
    std::array<Waiting, kMaxDepth> waiting;
    std::size_t count = 0;
    waiting[count++] = {0, minSquaredDistance(point, nodes[0].bounds)};
    while (count > 0) {
        const Waiting next = waiting[--count];
        if (!(next.squaredDistance < minSquared)) continue;
        const Node& node = nodes[next.node];
        if (node.count > 0) {
            for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
                const double distance = squaredDistance(point, triangles[i]);
                if (distance < minSquared) {
                    minSquared = distance;
                    best = i;
                }
            }
            continue;
        }
        Waiting nearer{next.node + 1, minSquaredDistance(point, nodes[next.node + 1].bounds)};
        Waiting farther{node.first, minSquaredDistance(point, nodes[node.first].bounds)};
        if (farther.squaredDistance < nearer.squaredDistance) std::swap(nearer, farther);
        if (farther.squaredDistance < minSquared) waiting[count++] = farther;
        if (nearer.squaredDistance < minSquared) waiting[count++] = nearer;
    }
    return {best, std::sqrt(minSquared)};
}

}  // namespace quarn
