/// \file
/// Point location on a mesh in UV.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/Triangle.h>

/// A closed rectangle in UV.
///
/// \code{.cpp}
/// const RegionRect unitSquare{0.0, 1.0, 0.0, 1.0};
/// const double centerU = (unitSquare.maxU - unitSquare.minU) * 0.5 + unitSquare.minU;
/// assert(centerU == 0.5);
/// \endcode
struct RegionRect {
    double minU = 0.0;  ///< Left edge.
    double maxU = 0.0;  ///< Right edge.
    double minV = 0.0;  ///< Top edge.
    double maxV = 0.0;  ///< Bottom edge.

    /// Compares edge by edge and exactly.
    friend bool operator==(const RegionRect& a, const RegionRect& b) = default;
};

class RegionMap;

/// A node of a RegionMap: an inner node with four children, or a leaf with triangles.
///
/// A map owns its nodes. A node is valid until the next RegionMap::rebuild() or RegionMap::clear().
///
/// Thread-safety: as for const operations of RegionMap.
///
/// \code{.cpp}
/// const std::vector<Triangle> mesh(3);
/// RegionMap map;
/// map.rebuild(mesh.data(), mesh.data() + mesh.size());
/// const RegionNode& root = map.nodes().back();
/// assert(root.count() == 3 && root.triangle(0) == &mesh[0]);
/// \endcode
class QUARNSCREEN_EXPORT RegionNode {
public:
    /// Returns the number of triangles of a leaf, or -1 for an inner node.
    [[nodiscard]] int count() const { return triangleCount; }
    /// Returns the index in RegionMap::nodes() of the child in a quadrant, 0 to 3.
    /// \pre the node is an inner node; it is not checked
    [[nodiscard]] int child(int quadrant) const { return payload[static_cast<std::size_t>(quadrant)]; }
    /// Returns a triangle of the leaf by its index in stored order.
    /// \pre 0 <= index < count(); it is not checked
    [[nodiscard]] const Triangle* triangle(int index) const;

private:
    friend class RegionMap;

    static constexpr int kInlineCapacity = 8;

    int triangleCount = -1;
    // The children of an inner node, or the entries of a leaf's triangles. If a leaf has too many
    // entries, the first element is the offset of its entries in the map's list.
    std::array<int, kInlineCapacity> payload{};
    int build = 0;  // number of the build that created the node
    const RegionMap* map = nullptr;
};

/// A quadtree over UV that finds the triangle that contains a UV, exactly and without tolerance.
///
/// Triangles are closed: their edges belong to them. Degenerate triangles (determinant 0) contain
/// no UV. Quadrants are numbered 0 to 3: top left, top right, bottom left, bottom right. A node
/// with at most 8 triangles, at depth 18, or whose triangles two subdivisions do not separate, is a
/// leaf. The structure of the tree and the order of the triangles in a leaf are part of the
/// behavior, because they determine the result for overlapping triangles. Counters are statistics
/// and do not affect results.
///
/// Ownership: the map does not own the triangles. They must not move or change until the next
/// rebuild() or clear().
///
/// Thread-safety: after rebuild(), any number of threads may call const operations at once.
///
/// Source: R. A. Finkel and J. L. Bentley, "Quad Trees: A Data Structure for Retrieval on Composite
/// Keys" (1974), with triangles in leaves instead of points in nodes.
///
/// \code{.cpp}
/// std::vector<Triangle> mesh(1);
/// std::vector<Point<double, 2>> uv = {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}};
/// for (std::size_t i = 0; i < 3; ++i) mesh[0].vertices[i].uv = uv[i];
/// RegionMap map;
/// map.rebuild(mesh.data(), mesh.data() + 1);
/// assert(map.triangleCount() == 1 && map.rootRect().maxU == 1.0);
/// \endcode
class QUARNSCREEN_EXPORT RegionMap {
public:
    /// Creates a map without nodes. Its rootRect() is zero.
    RegionMap();
    // Nodes refer to their map.
    RegionMap(const RegionMap&) = delete;
    RegionMap& operator=(const RegionMap&) = delete;
    ~RegionMap();

    /// Rebuilds the tree over the half-open range of triangles from \p first to \p last.
    ///
    /// O(n log n) in time and memory for usual UV layouts. A triangle is stored in each leaf that
    /// it overlaps, so that overlapping triangles can make the tree larger by orders of magnitude.
    /// \param first, last range of contiguous triangles; may be empty
    /// \pre the derived UV fields of each triangle have been computed
    /// \note Intended: the nodes of earlier builds remain at the front of nodes(), unreachable by a
    ///       search; a reader would expect them to be removed.
    void rebuild(const Triangle* first, const Triangle* last);

    /// Removes all nodes, including those of earlier builds, and resets the statistics. rootRect()
    /// becomes inverted.
    void clear();

    /// Finds the first triangle of a subtree that contains (u, v).
    ///
    /// A UV on the line between two quadrants belongs to the left or top one. A search visits one
    /// leaf: O(depth + triangles of the leaf).
    /// \param nodeIndex root of the subtree; the root of the whole tree is the last node
    /// \param rect rectangle of the node; rootRect() for the root of the whole tree
    /// \param u, v the UV; NaN finds no triangle
    /// \param[out] result the triangle; unchanged if no triangle contains the UV
    /// \pre \p nodeIndex is a valid index, and (u, v) lies in \p rect; neither is checked
    void locate(int nodeIndex, const RegionRect& rect, double u, double v,
                std::optional<const Triangle*>& result) const;

    /// Returns the nodes of all builds, children before their parent.
    [[nodiscard]] const std::vector<RegionNode>& nodes() const { return nodeList; }
    /// Returns the bounding rectangle of all triangles in UV; inverted for a build without
    /// triangles.
    [[nodiscard]] const RegionRect& rootRect() const { return wholeRect; }
    /// Returns the number of triangles of the last build.
    [[nodiscard]] int triangleCount() const { return builtTriangles; }
    /// Returns the number of nodes whose subdivision was reverted, so that they became leaves.
    [[nodiscard]] int failedSplits() const { return splitsGivenUp; }
    /// Returns the depth of the deepest leaf; the root has depth 1.
    [[nodiscard]] int maxDepth() const { return statistics.maxDepth; }
    /// Returns the depth of the shallowest leaf; the largest int before the first build.
    [[nodiscard]] int minDepth() const { return statistics.minDepth; }
    /// Returns the number of triangles of the largest leaf.
    [[nodiscard]] int maxLeafSize() const { return statistics.maxLeafSize; }
    /// Returns the number of triangles of the smallest leaf; the largest int before the first
    /// build.
    [[nodiscard]] int minLeafSize() const { return statistics.minLeafSize; }
    /// Returns the sum of the triangles of all leaves. A triangle is counted in each leaf that it
    /// overlaps.
    [[nodiscard]] int leafTriangleTotal() const { return statistics.leafTriangleTotal; }
    /// Returns the number of leaves, including empty ones.
    [[nodiscard]] int leafCount() const { return statistics.leafCount; }
    /// Returns the number of inner nodes.
    [[nodiscard]] int innerCount() const { return statistics.innerCount; }
    /// Returns the number of leaves without a triangle.
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

    // The fields that the test of a triangle reads. They fill one cache line, and those of a leaf
    // are adjacent.
    struct alignas(64) UVTest {
        Point<double, 2> corner;
        Point<double, 2> edge1;
        Point<double, 2> edge2;
        double determinant = 0.0;
        const Triangle* triangle = nullptr;

        [[nodiscard]] bool holds(double u, double v) const;
    };

    struct SearchTables;
    class NodeVisitor;
    class EarlierNodes;

    friend class RegionNode;

    void cutAll(const Triangle* first, std::size_t count);
    void countLeaf(int triangleCount, int depth);
    [[nodiscard]] bool isOfLastBuild(const RegionNode& node) const {
        return static_cast<std::size_t>(node.build) + 1 == buildRanges.size();
    }
    [[nodiscard]] int slotInLeaf(const RegionNode& leaf, int index) const;
    static UVTest uvTestOf(const Triangle& triangle);
    void makeTests();

    RegionRect wholeRect;
    std::vector<RegionNode> nodeList;
    std::vector<const Triangle*> buildRanges;  // start of each build's range of triangles
    std::size_t firstNode = 0;                 // of the last build
    // Entries of the leaves that exceed the inline capacity. An entry of the last build is a slot.
    // An entry of an earlier build is the index of a triangle in that build's range.
    std::vector<int> longLists;
    std::size_t firstEntry = 0;     // of the last build in the lists
    std::size_t previousEntry = 0;  // of the lists before those
    // For each slot of the last build, the index of its triangle. A triangle gets a slot when it is
    // first stored in a leaf, so that the slots of a leaf are adjacent.
    std::vector<int> slotTriangles;
    bool hasUVArea = true;                 // false if no triangle of the last build contains any UV
    std::unique_ptr<SearchTables> tables;  // never null
    int builtTriangles = 0;
    int splitsGivenUp = 0;
    Statistics statistics;
};
