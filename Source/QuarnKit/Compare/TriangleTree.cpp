#include "TriangleTree.h"

#include <algorithm>
#include <cmath>

namespace quarn {

namespace {

constexpr std::uint32_t kLeafSize = 4;
// Levels of a search: halving a 32-bit count of triangles comes to an end before.
constexpr std::size_t kMaxDepth = 40;

}  // namespace

// Halves the triangles by the middle of their boxes, along the axis on which these are spread the widest.
class TriangleTree::Builder {
public:
    Builder(const std::vector<Corners>& triangleList, std::vector<Node>& nodeList)
        : triangles(triangleList), nodes(nodeList), order(triangleList.size()), centers(triangleList.size()) {
        for (std::uint32_t i = 0; i < order.size(); ++i) {
            order[i] = i;
            const Box box = boxOf(triangles[i]);
            centers[i] = box.low + box.high;
        }
        build(0, static_cast<std::uint32_t>(order.size()));
    }

    [[nodiscard]] const std::vector<std::uint32_t>& triangleOrder() const { return order; }

private:
    static void extend(Box& box, const Point<double, 3>& point) {
        for (std::size_t i = 0; i < 3; ++i) {
            box.low[i] = std::min(box.low[i], point[i]);
            box.high[i] = std::max(box.high[i], point[i]);
        }
    }

    static Box boxOf(const Corners& triangle) {
        Box box{triangle[0], triangle[0]};
        extend(box, triangle[1]);
        extend(box, triangle[2]);
        return box;
    }

    [[nodiscard]] Box boxOf(std::uint32_t begin, std::uint32_t end) const {
        Box box = boxOf(triangles[order[begin]]);
        for (std::uint32_t i = begin + 1; i < end; ++i)
            for (const Point<double, 3>& corner : triangles[order[i]]) extend(box, corner);
        return box;
    }

    [[nodiscard]] std::size_t widestAxis(std::uint32_t begin, std::uint32_t end) const {
        Box box{centers[order[begin]], centers[order[begin]]};
        for (std::uint32_t i = begin + 1; i < end; ++i) extend(box, centers[order[i]]);
        const Point<double, 3> size = box.high - box.low;
        std::size_t axis = 0;
        for (std::size_t i = 1; i < 3; ++i)
            if (size[i] > size[axis]) axis = i;
        return axis;
    }

    void build(std::uint32_t begin, std::uint32_t end) {
        const std::size_t index = nodes.size();
        nodes.push_back({.box = boxOf(begin, end), .first = begin, .count = end - begin});
        if (end - begin <= kLeafSize) return;
        const std::uint32_t middle = begin + (end - begin) / 2;
        const std::size_t axis = widestAxis(begin, end);
        // Equal middles are told apart by their indexes, so that the tree is the same with every library.
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

    const std::vector<Corners>& triangles;
    std::vector<Node>& nodes;
    std::vector<std::uint32_t> order;
    std::vector<Point<double, 3>> centers;  // twice those of the boxes
};

double TriangleTree::Box::squaredDistance(const Point<double, 3>& point) const {
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double outside = std::max(std::max(low[i] - point[i], point[i] - high[i]), 0.0);
        sum += outside * outside;
    }
    return sum;
}

TriangleTree::TriangleTree(std::vector<Corners> triangleList) {
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
    // Rounding may put a box a little farther away than a triangle in it. A box that is too near costs time alone.
    constexpr double kBoxMargin = 1.0 - 1e-12;
    std::uint32_t best = hint == kNone ? 0 : hint;
    double least = squaredDistance(point, triangles[best]);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): filled as it grows
    std::array<Waiting, kMaxDepth> waiting;
    std::size_t count = 0;
    waiting[count++] = {0, nodes[0].box.squaredDistance(point) * kBoxMargin};
    while (count > 0) {
        const Waiting next = waiting[--count];
        if (!(next.squaredDistance < least)) continue;
        const Node& node = nodes[next.node];
        if (node.count > 0) {
            for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
                const double distance = squaredDistance(point, triangles[i]);
                if (distance < least) {
                    least = distance;
                    best = i;
                }
            }
            continue;
        }
        Waiting nearer{next.node + 1, nodes[next.node + 1].box.squaredDistance(point) * kBoxMargin};
        Waiting farther{node.first, nodes[node.first].box.squaredDistance(point) * kBoxMargin};
        if (farther.squaredDistance < nearer.squaredDistance) std::swap(nearer, farther);
        if (farther.squaredDistance < least) waiting[count++] = farther;
        if (nearer.squaredDistance < least) waiting[count++] = nearer;
    }
    return {best, std::sqrt(least)};
}

}  // namespace quarn
