/// \file
/// A quadtree over UV, for comparison of times. Unlike ReferenceRegionMap it counts nothing, and
/// leaves of up to eight triangles allocate no memory.
#pragma once

#include <array>
#include <cstddef>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "Reference/Mesh/ReferenceRegionMap.h"

namespace quarn::test {

/// The same tree as RegionMap's, without statistics; a further build appends its nodes, too.
class ReferenceQuadtree {
public:
    void build(const std::vector<Triangle>& list) {
        bounds.reserve(list.size());
        rootRect = boxOf(list.front());
        for (const Triangle& triangle : list) {
            bounds.push_back(boxOf(triangle));
            growBy(rootRect, bounds.back().minU, bounds.back().minV);
            growBy(rootRect, bounds.back().maxU, bounds.back().maxV);
        }
        triangles = list.data();
        std::vector<int> indices(list.size());
        std::iota(indices.begin(), indices.end(), 0);
        buildNode(indices.data(), indices.data() + indices.size(), rootRect, 1, 0x7FFFFFFF);
        bounds.clear();
    }

    /// The first triangle that contains a UV.
    [[nodiscard]] std::optional<const Triangle*> locate(double u, double v) const {
        if (rootRect.minU > u || u > rootRect.maxU || rootRect.minV > v || v > rootRect.maxV)
            return std::nullopt;
        RegionRect rect = rootRect;
        const Node* node = &nodes.back();
        while (node->count < 0) {
            const double midU = (rect.maxU - rect.minU) * 0.5 + rect.minU;
            const double midV = (rect.maxV - rect.minV) * 0.5 + rect.minV;
            const bool isRight = midU < u;
            const bool isBelow = midV < v;
            (isRight ? rect.minU : rect.maxU) = midU;
            (isBelow ? rect.minV : rect.maxV) = midV;
            const std::size_t quadrant = (isRight ? 1U : 0U) + (isBelow ? 2U : 0U);
            node = &nodes[static_cast<std::size_t>(node->children[quadrant])];
        }
        const Triangle* const* leaf =
            node->count <= kInlineCapacity ? node->inlined.data() : longLeaves[node->longIndex].data();
        for (int i = 0; i < node->count; ++i)
            if (holdsPoint(*leaf[i], u, v)) return leaf[i];
        return std::nullopt;
    }

private:
    static constexpr int kInlineCapacity = 8;
    static constexpr int kMaxDepth = 18;

    struct Node {
        int count;  // -1 for an inner node
        union {
            std::array<int, 4> children;
            std::array<const Triangle*, kInlineCapacity> inlined;
            std::size_t longIndex;  // of a longer list
        };
    };

    [[nodiscard]] bool overlaps(int index, const RegionRect& rect) const {
        const RegionRect& box = bounds[static_cast<std::size_t>(index)];
        return !(rect.minU > box.maxU || box.minU > rect.maxU || rect.minV > box.maxV ||
                 box.minV > rect.maxV);
    }

    [[nodiscard]] int* partition(int* i, int* j, const RegionRect& rect) const {
        while (i != j) {
            if (!overlaps(*i, rect)) {
                for (--j; j != i && !overlaps(*j, rect);) --j;
                if (j == i) break;
                std::swap(*i, *j);
            }
            ++i;
        }
        return i;
    }

    int append(const Node& node) {
        nodes.push_back(node);
        return static_cast<int>(nodes.size()) - 1;
    }

    int makeLeaf(const int* first, const int* last) {
        Node leaf;
        leaf.count = static_cast<int>(last - first);
        leaf.inlined = {};
        const auto pointer = [this](int index) { return triangles + index; };
        if (leaf.count <= kInlineCapacity) {
            std::transform(first, last, leaf.inlined.begin(), pointer);
        } else {
            leaf.longIndex = longLeaves.size();
            std::transform(first, last, std::back_inserter(longLeaves.emplace_back()), pointer);
        }
        return append(leaf);
    }

    // -1 for a node that its parent has to replace, as it failed to reduce the triangles twice
    // running.
    int buildNode(int* first, int* last, const RegionRect& rect, int depth, int parentCount) {
        const int count = static_cast<int>(last - first);
        if (count <= kInlineCapacity || depth >= kMaxDepth) return makeLeaf(first, last);
        const std::array<RegionRect, 4> quadrants = quadrantsOf(rect);
        const std::size_t nodesBefore = nodes.size();
        const std::size_t longBefore = longLeaves.size();
        Node node;
        node.count = -1;
        node.children = {};
        for (std::size_t quadrant = 0; quadrant < 4; ++quadrant) {
            int* const end = partition(first, last, quadrants[quadrant]);
            if (end == last && count == parentCount) return -1;
            const int child = buildNode(first, end, quadrants[quadrant], depth + 1, count);
            if (child == -1) {
                nodes.resize(nodesBefore);
                longLeaves.resize(longBefore);
                return makeLeaf(first, last);
            }
            node.children[quadrant] = child;
        }
        return append(node);
    }

    const Triangle* triangles = nullptr;
    std::vector<RegionRect> bounds;
    RegionRect rootRect;
    std::vector<Node> nodes;
    std::vector<std::vector<const Triangle*>> longLeaves;
};

}  // namespace quarn::test
