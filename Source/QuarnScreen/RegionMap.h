/// \file
/// Location of UV points on a mesh.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {
class QuadtreeLookup;
}

/// A rectangle in UV.
struct RegionRect {
    double minU = 0.0;  ///< Left edge.
    double maxU = 0.0;  ///< Right edge.
    double minV = 0.0;  ///< Top edge.
    double maxV = 0.0;  ///< Bottom edge.

    /// Edge by edge and exactly.
    friend bool operator==(const RegionRect& a, const RegionRect& b) = default;
};

class RegionMap;

/// A node of a RegionMap: an inner node with four children, or a leaf with triangles. It lives as long as its
/// map.
class QUARNSCREEN_EXPORT RegionNode {
public:
    /// -1 for an inner node, else the number of triangles of the leaf.
    [[nodiscard]] int count() const { return triangleCount; }
    /// Index of the child in a quadrant, 0 to 3. \pre the node is an inner one; it is not checked.
    [[nodiscard]] int child(int quadrant) const { return payload[static_cast<std::size_t>(quadrant)]; }
    /// Triangle of the leaf, in stored order. \pre 0 <= index < count(); it is not checked.
    [[nodiscard]] const Triangle* triangle(int index) const;

private:
    friend class RegionMap;

    static constexpr int kInlineCapacity = 8;

    int triangleCount = -1;
    // The children of an inner node; the slots of the triangles of a leaf, or, where they are too many, the
    // place in the map's list where they begin.
    std::array<int, kInlineCapacity> payload{};
    const RegionMap* map = nullptr;
};

/// A quadtree over UV that finds the triangle which holds a UV point, exactly and with no tolerance.
///
/// Quadrants are numbered 0 to 3: left above, right above, left below, right below. The tree, the order of
/// the triangles in a leaf and so the answer where triangles overlap are part of the behaviour. Counters are
/// statistics; nothing is decided by them. The map refers to triangles that it does not own and that must not
/// move.
///
/// Thread-safety: after rebuild() any number of threads may ask at once.
class QUARNSCREEN_EXPORT RegionMap {
public:
    RegionMap();
    // Nodes refer to their map.
    RegionMap(const RegionMap&) = delete;
    RegionMap& operator=(const RegionMap&) = delete;
    ~RegionMap();

    /// Rebuilds the tree over the triangles from \p first up to, not including, \p last; their UV fields must
    /// have been computed. Intended: the nodes of earlier builds stay at the front of nodes(), out of reach
    /// of a search.
    void rebuild(const Triangle* first, const Triangle* last);

    /// Drops all nodes, those of earlier builds as well, and sets the statistics back.
    void clear();

    /// Finds the first triangle that holds (u, v) in a subtree.
    /// \param nodeIndex root of the subtree; the root of the whole tree is the last node
    /// \param rect rectangle of that node; of the root it is rootRect()
    /// \param[out] result left as it was where no triangle holds the point
    /// \pre (u, v) lies in \p rect; a point on the line between two quadrants belongs to the one left or
    /// above
    void locate(int nodeIndex, const RegionRect& rect, double u, double v,
                std::optional<const Triangle*>& result) const;

    /// Nodes of all builds, children before their parent.
    [[nodiscard]] const std::vector<RegionNode>& nodes() const { return nodeList; }
    /// Union of the UV boxes of all triangles; inverted where there is none.
    [[nodiscard]] const RegionRect& rootRect() const { return wholeRect; }
    /// Triangles of the last build.
    [[nodiscard]] int triangleCount() const { return builtTriangles; }
    /// How often a node gave up its subdivision and became a leaf.
    [[nodiscard]] int failedSplits() const { return splitsGivenUp; }
    /// Depth of the deepest leaf; the root has depth 1.
    [[nodiscard]] int maxDepth() const { return statistics.maxDepth; }
    /// Depth of the shallowest leaf.
    [[nodiscard]] int minDepth() const { return statistics.minDepth; }
    /// Triangles of the largest leaf.
    [[nodiscard]] int maxLeafSize() const { return statistics.maxLeafSize; }
    /// Triangles of the smallest leaf.
    [[nodiscard]] int minLeafSize() const { return statistics.minLeafSize; }
    /// Triangles of all leaves; a triangle stands in each leaf that it overlaps.
    [[nodiscard]] int leafTriangleTotal() const { return statistics.leafTriangleTotal; }
    /// Number of leaves, empty ones included.
    [[nodiscard]] int leafCount() const { return statistics.leafCount; }
    /// Number of inner nodes.
    [[nodiscard]] int innerCount() const { return statistics.innerCount; }
    /// Number of leaves without a triangle.
    [[nodiscard]] int emptyLeafCount() const { return statistics.emptyLeafCount; }

private:
    struct Statistics {
        int maxDepth = 0;
        int minDepth = std::numeric_limits<int>::max();
        int maxLeafSize = 0;
        int minLeafSize = std::numeric_limits<int>::max();
        int leafTriangleTotal = 0;
        int leafCount = 0;
        int innerCount = 0;
        int emptyLeafCount = 0;
    };

    // What the test of a triangle reads: one cache line, and those of a leaf near to one another.
    struct alignas(64) UVTest {
        Point<double, 2> corner;
        Point<double, 2> edge1;
        Point<double, 2> edge2;
        double determinant = 0.0;
        const Triangle* triangle = nullptr;

        [[nodiscard]] bool holds(double u, double v) const;
    };

    class NodeVisitor;

    friend class RegionNode;

    void cutAll(const Triangle* first, std::size_t count);
    void countLeaf(int triangleCount, int depth);
    [[nodiscard]] int slotInLeaf(const RegionNode& leaf, int index) const;
    static UVTest uvTestOf(const Triangle& triangle);
    void makeTests();

    RegionRect wholeRect;
    std::vector<RegionNode> nodeList;
    std::vector<int> longLists;  // slots of the leaves that do not hold theirs in place
    // Triangles get a slot when a leaf first takes them, so that those of a leaf have near ones.
    std::vector<const Triangle*> slotTriangles;
    std::size_t firstSlot = 0;  // of the last build; the first test belongs to it
    std::vector<UVTest> tests;
    std::unique_ptr<quarn::detail::QuadtreeLookup> lookup;
    int builtTriangles = 0;
    int splitsGivenUp = 0;
    Statistics statistics;
};
