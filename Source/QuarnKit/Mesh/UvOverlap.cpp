#include "UvOverlap.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include <Common/Detail/Assert.h>
#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

Bounds<2> boundsOf(const TriangleUVs& triangle) {
    Bounds<2> bounds(triangle[0]);
    bounds.include(triangle[1]);
    bounds.include(triangle[2]);
    return bounds;
}

// True if two boxes overlap by more than kMinUvOverlap along both axes.
bool doBoxesOverlap(const Bounds<2>& a, const Bounds<2>& b) {
    return std::min(a.max[0], b.max[0]) - std::max(a.min[0], b.min[0]) > kMinUvOverlap &&
           std::min(a.max[1], b.max[1]) - std::max(a.min[1], b.min[1]) > kMinUvOverlap;
}

struct Extent {
    double low;
    double high;
};

Extent extentAlong(const TriangleUVs& triangle, double u, double v) {
    const auto [low, high] =
        std::minmax({triangle[0][0] * u + triangle[0][1] * v, triangle[1][0] * u + triangle[1][1] * v,
                     triangle[2][0] * u + triangle[2][1] * v});
    return {low, high};
}

// Returns true if the line along an edge of \p a separates the two triangles.
bool hasSeparatingEdge(const TriangleUVs& a, const TriangleUVs& b) {
    for (std::size_t i = 0; i < 3; ++i) {
        const Point<double, 2> edge = a[(i + 1) % 3] - a[i];
        const double minOverlap = kMinUvOverlap * length(edge);
        const Extent ofA = extentAlong(a, -edge[1], edge[0]);
        const Extent ofB = extentAlong(b, -edge[1], edge[0]);
        if (!(std::min(ofA.high, ofB.high) - std::max(ofA.low, ofB.low) > minOverlap)) return true;
    }
    return false;
}

// Builds a tree of bounding boxes, and finds the pairs of leaves that overlap.
class OverlapSearch {
public:
    OverlapSearch(const std::vector<TriangleUVs>& uvTriangles, std::uint64_t maxSteps)
        : triangles(uvTriangles),
          stepsLeft(maxSteps),
          doesOverlap(triangles.size()),
          order(triangles.size()) {
        boxes.reserve(triangles.size());
        for (const TriangleUVs& triangle : triangles) boxes.push_back(boundsOf(triangle));
        std::iota(order.begin(), order.end(), 0U);
        if (!order.empty()) build(0, static_cast<std::uint32_t>(order.size()));
    }

    void run() {
        if (nodes.empty()) return;
        std::vector<std::pair<std::uint32_t, std::uint32_t>> open = {{0, 0}};
        while (!open.empty() && stepsLeft > 0) {
            const auto [a, b] = open.back();
            open.pop_back();
            --stepsLeft;
            if (a != b && !doBoxesOverlap(nodes[a].box, nodes[b].box)) continue;
            if (nodes[a].isLeaf() && nodes[b].isLeaf()) {
                compareLeaves(nodes[a], nodes[b]);
            } else if (a == b) {
                open.emplace_back(a + 1, a + 1);
                open.emplace_back(nodes[a].second, nodes[a].second);
                open.emplace_back(a + 1, nodes[a].second);
            } else if (nodes[b].isLeaf() || (!nodes[a].isLeaf() && nodes[a].size() > nodes[b].size())) {
                open.emplace_back(a + 1, b);
                open.emplace_back(nodes[a].second, b);
            } else {
                open.emplace_back(a, b + 1);
                open.emplace_back(a, nodes[b].second);
            }
        }
    }

    [[nodiscard]] UvOverlaps result() const {
        UvOverlaps overlaps{.triangles = {}, .isComplete = stepsLeft > 0};
        for (std::uint32_t i = 0; i < doesOverlap.size(); ++i)
            if (doesOverlap[i]) overlaps.triangles.push_back(i);
        return overlaps;
    }

private:
    static constexpr std::uint32_t kLeafSize = 4;

    // Contains the triangles from `first` to `last` of the order. The first child follows its
    // parent.
    struct Node {
        Bounds<2> box;
        std::uint32_t first;
        std::uint32_t last;
        std::uint32_t second = 0;

        [[nodiscard]] bool isLeaf() const { return second == 0; }
        [[nodiscard]] std::uint32_t size() const { return last - first; }
    };

    std::uint32_t build(std::uint32_t first, std::uint32_t last) {
        const auto index = static_cast<std::uint32_t>(nodes.size());
        Node node{.box = {}, .first = first, .last = last};
        for (std::uint32_t i = first; i < last; ++i) node.box.include(boxes[order[i]]);
        nodes.push_back(node);
        if (last - first <= kLeafSize) return index;
        const std::uint32_t middle = first + (last - first) / 2;
        const Point<double, 2> extent = node.box.extent();
        const std::size_t axis = extent[0] > extent[1] ? 0 : 1;
        const auto center = [&](std::uint32_t triangle) {
            return boxes[triangle].min[axis] + boxes[triangle].max[axis];
        };
        std::nth_element(order.begin() + first, order.begin() + middle, order.begin() + last,
                         [&](std::uint32_t a, std::uint32_t b) { return center(a) < center(b); });
        build(first, middle);
        const std::uint32_t second = build(middle, last);
        nodes[index].second = second;
        return index;
    }

    void compareLeaves(const Node& a, const Node& b) {
        const bool isSame = a.first == b.first;
        for (std::uint32_t i = a.first; i < a.last; ++i)
            for (std::uint32_t j = isSame ? i + 1 : b.first; j < b.last; ++j) {
                const std::uint32_t x = order[i];
                const std::uint32_t y = order[j];
                if (stepsLeft == 0) return;
                // A pair of triangles that are both known adds nothing.
                if ((doesOverlap[x] && doesOverlap[y]) || !doBoxesOverlap(boxes[x], boxes[y])) continue;
                --stepsLeft;
                if (!doOverlap(triangles[x], triangles[y])) continue;
                doesOverlap[x] = true;
                doesOverlap[y] = true;
            }
    }

    const std::vector<TriangleUVs>& triangles;
    std::uint64_t stepsLeft;
    std::vector<bool> doesOverlap;
    std::vector<std::uint32_t> order;
    std::vector<Bounds<2>> boxes;
    std::vector<Node> nodes;
};

}  // namespace

bool doOverlap(const TriangleUVs& a, const TriangleUVs& b) {
    return !hasSeparatingEdge(a, b) && !hasSeparatingEdge(b, a);
}

UvOverlaps findUvOverlaps(const std::vector<TriangleUVs>& triangles) {
    QUARN_ASSERT(std::all_of(triangles.begin(), triangles.end(), [](const TriangleUVs& uvs) {
        return isFinite(uvs[0]) && isFinite(uvs[1]) && isFinite(uvs[2]);
    }));
    // Pairs to compare: several times what usual meshes take, a few seconds at most.
    constexpr std::uint64_t kBaseSteps = 20'000'000;
    constexpr std::uint64_t kStepsPerTriangle = 200;
    OverlapSearch search(triangles, kBaseSteps + kStepsPerTriangle * triangles.size());
    search.run();
    return search.result();
}

}  // namespace quarn
