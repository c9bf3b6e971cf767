/// \file
/// Reference implementation of the quadtree over UV: leaves hold pointers, and all walks recurse.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include <QuarnScreen/RegionMap.h>

namespace quarn::test {

/// Whether a triangle holds a UV point, with no tolerance.
inline bool holdsPoint(const Triangle& triangle, double u, double v) {
    if (triangle.uvDeterminant == 0.0) return false;
    const double du = u - triangle.vertices[0].uv[0];
    const double dv = v - triangle.vertices[0].uv[1];
    const double a = (du * triangle.uvEdge2[1] - dv * triangle.uvEdge2[0]) / triangle.uvDeterminant;
    const double b = (dv * triangle.uvEdge1[0] - du * triangle.uvEdge1[1]) / triangle.uvDeterminant;
    return a >= 0.0 && b >= 0.0 && 1.0 >= a + b;
}

inline void growBy(RegionRect& rect, double u, double v) {
    if (u < rect.minU) rect.minU = u;
    if (u > rect.maxU) rect.maxU = u;
    if (v < rect.minV) rect.minV = v;
    if (v > rect.maxV) rect.maxV = v;
}

inline RegionRect boxOf(const Triangle& triangle) {
    const Point<double, 2>& first = triangle.vertices[0].uv;
    RegionRect box = {first[0], first[0], first[1], first[1]};
    for (const TriangleVertex& vertex : triangle.vertices) growBy(box, vertex.uv[0], vertex.uv[1]);
    return box;
}

/// The four quadrants of a rectangle.
inline std::array<RegionRect, 4> quadrantsOf(const RegionRect& r) {
    const double midU = (r.maxU - r.minU) * 0.5 + r.minU;
    const double midV = (r.maxV - r.minV) * 0.5 + r.minV;
    return {RegionRect{r.minU, midU, r.minV, midV}, RegionRect{midU, r.maxU, r.minV, midV},
            RegionRect{r.minU, midU, midV, r.maxV}, RegionRect{midU, r.maxU, midV, r.maxV}};
}

/// Slow and simple quadtree that stores its nodes and triangles in the same order as RegionMap.
class ReferenceRegionMap {
public:
    struct Node {
        int count = -1;
        std::array<int, 4> children{};
        std::vector<const Triangle*> triangles;
    };
    struct Statistics {
        int maxDepth = 0;
        int minDepth = 0x7FFFFFFF;
        int maxLeafSize = 0;
        int minLeafSize = 0x7FFFFFFF;
        int leafTriangleTotal = 0;
        int leafCount = 0;
        int innerCount = 0;
        int emptyLeafCount = 0;
    };

    void rebuild(const std::vector<Triangle>& list) {
        constexpr double kGreatest = std::numeric_limits<double>::max();
        statistics = {};
        failedSplits = 0;
        triangleCount = static_cast<int>(list.size());
        rootRect = {kGreatest, -kGreatest, kGreatest, -kGreatest};
        std::vector<int> indices;
        for (const Triangle& triangle : list) {
            const RegionRect box = boxOf(triangle);
            triangles.push_back(&triangle);
            bounds.push_back(box);
            growBy(rootRect, box.minU, box.minV);
            growBy(rootRect, box.maxU, box.maxV);
            indices.push_back(static_cast<int>(indices.size()));
        }
        buildNode(indices.data(), indices.data() + indices.size(), rootRect, 1, 0x7FFFFFFF);
        triangles.clear();
        bounds.clear();
    }

    void locate(int nodeIndex, const RegionRect& rect, double u, double v,
                std::optional<const Triangle*>& result) const {
        const Node& node = nodes.at(static_cast<std::size_t>(nodeIndex));
        if (node.count < 0) {
            const std::array<RegionRect, 4> quadrants = quadrantsOf(rect);
            const double midU = quadrants[0].maxU;
            const double midV = quadrants[0].maxV;
            std::size_t quadrant = 3;
            if (midU >= u && midV >= v)
                quadrant = 0;
            else if (midU < u && midV >= v)
                quadrant = 1;
            else if (midU >= u && midV < v)
                quadrant = 2;
            locate(node.children[quadrant], quadrants[quadrant], u, v, result);
            return;
        }
        for (const Triangle* triangle : node.triangles) {
            if (!holdsPoint(*triangle, u, v)) continue;
            result = triangle;
            return;
        }
    }

    std::vector<Node> nodes;
    RegionRect rootRect;
    int triangleCount = 0;
    int failedSplits = 0;
    Statistics statistics;

private:
    bool overlaps(int index, const RegionRect& rect) const {
        const RegionRect& box = bounds[static_cast<std::size_t>(index)];
        if (rect.minU > box.maxU) return false;
        if (box.minU > rect.maxU) return false;
        if (rect.minV > box.maxV) return false;
        if (box.minV > rect.maxV) return false;
        return true;
    }

    int* partition(int* i, int* j, const RegionRect& rect) const {
        while (i != j) {
            if (overlaps(*i, rect)) {
                ++i;
                continue;
            }
            for (--j; j != i && !overlaps(*j, rect);) --j;
            if (j == i) break;
            std::swap(*i, *j);
            ++i;
        }
        return i;
    }

    int buildNode(int* first, int* last, const RegionRect& rect, int depth, int parentCount) {
        const int n = static_cast<int>(last - first);
        if (n <= 8 || depth >= 18) return makeLeaf(first, last, depth);
        const std::array<RegionRect, 4> quadrants = quadrantsOf(rect);
        const Statistics saved = statistics;
        const std::size_t savedCount = nodes.size();
        Node node;
        for (std::size_t quadrant = 0; quadrant < 4; ++quadrant) {
            int* const p = partition(first, last, quadrants[quadrant]);
            if (p == last && n == parentCount) return -1;
            const int child = buildNode(first, p, quadrants[quadrant], depth + 1, n);
            if (child == -1) {
                statistics = saved;
                nodes.resize(savedCount);
                failedSplits += 1;
                return makeLeaf(first, last, depth);
            }
            node.children[quadrant] = child;
        }
        nodes.push_back(node);
        statistics.innerCount += 1;
        return static_cast<int>(nodes.size()) - 1;
    }

    int makeLeaf(const int* first, const int* last, int depth) {
        Node node;
        node.count = static_cast<int>(last - first);
        for (; first != last; ++first) node.triangles.push_back(triangles[static_cast<std::size_t>(*first)]);
        nodes.push_back(node);
        statistics.leafCount += 1;
        statistics.maxDepth = std::max(statistics.maxDepth, depth);
        statistics.minDepth = std::min(statistics.minDepth, depth);
        statistics.maxLeafSize = std::max(statistics.maxLeafSize, node.count);
        statistics.minLeafSize = std::min(statistics.minLeafSize, node.count);
        statistics.leafTriangleTotal += node.count;
        if (node.count == 0) statistics.emptyLeafCount += 1;
        return static_cast<int>(nodes.size()) - 1;
    }

    std::vector<const Triangle*> triangles;
    std::vector<RegionRect> bounds;
};

}  // namespace quarn::test
