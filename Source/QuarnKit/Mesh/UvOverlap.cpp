#include "UvOverlap.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace quarn {

namespace {

struct Box {
    double minU = std::numeric_limits<double>::infinity();
    double maxU = -std::numeric_limits<double>::infinity();
    double minV = std::numeric_limits<double>::infinity();
    double maxV = -std::numeric_limits<double>::infinity();

    void include(const Box& other) {
        minU = std::min(minU, other.minU);
        maxU = std::max(maxU, other.maxU);
        minV = std::min(minV, other.minV);
        maxV = std::max(maxV, other.maxV);
    }
    [[nodiscard]] bool reachesInto(const Box& other) const {
        return std::min(maxU, other.maxU) - std::max(minU, other.minU) > kMinUvOverlap &&
               std::min(maxV, other.maxV) - std::max(minV, other.minV) > kMinUvOverlap;
    }
};

Box boxOf(const TriangleUVs& triangle) {
    const auto [minU, maxU] = std::minmax({triangle[0][0], triangle[1][0], triangle[2][0]});
    const auto [minV, maxV] = std::minmax({triangle[0][1], triangle[1][1], triangle[2][1]});
    return {minU, maxU, minV, maxV};
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

// Whether an edge of one triangle has the other one beyond it.
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

// A tree of boxes in which neighbours in UV are near to each other, and its walk against itself.
class OverlapSearch {
public:
    OverlapSearch(const std::vector<TriangleUVs>& uvTriangles, std::uint64_t maxSteps)
        : triangles(uvTriangles),
          stepsLeft(maxSteps),
          doesOverlap(triangles.size()),
          order(triangles.size()) {
        boxes.reserve(triangles.size());
        for (const TriangleUVs& triangle : triangles) boxes.push_back(boxOf(triangle));
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
            if (a != b && !nodes[a].box.reachesInto(nodes[b].box)) continue;
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

    // The triangles from `first` to `last` of the order. The first child follows its parent.
    struct Node {
        Box box;
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
        const bool isWide = node.box.maxU - node.box.minU > node.box.maxV - node.box.minV;
        const auto place = [&](std::uint32_t triangle) {
            const Box& box = boxes[triangle];
            return isWide ? box.minU + box.maxU : box.minV + box.maxV;
        };
        std::nth_element(order.begin() + first, order.begin() + middle, order.begin() + last,
                         [&](std::uint32_t a, std::uint32_t b) { return place(a) < place(b); });
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
                // One more pair of triangles that are known already would tell nothing.
                if ((doesOverlap[x] && doesOverlap[y]) || !boxes[x].reachesInto(boxes[y])) continue;
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
    std::vector<Box> boxes;
    std::vector<Node> nodes;
};

}  // namespace

bool doOverlap(const TriangleUVs& a, const TriangleUVs& b) {
    return !hasSeparatingEdge(a, b) && !hasSeparatingEdge(b, a);
}

UvOverlaps findUvOverlaps(const std::vector<TriangleUVs>& triangles) {
    // Pairs that are looked at: several times what usual meshes take, some seconds at most.
    constexpr std::uint64_t kBaseSteps = 20'000'000;
    constexpr std::uint64_t kStepsPerTriangle = 200;
    OverlapSearch search(triangles, kBaseSteps + kStepsPerTriangle * triangles.size());
    search.run();
    return search.result();
}

}  // namespace quarn
