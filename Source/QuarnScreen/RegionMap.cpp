#include <QuarnScreen/RegionMap.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Detail/Search/QuadtreeSubdivision.h>
#include <QuarnScreen/Detail/Search/RegionMapShortcut.h>

namespace {

using quarn::detail::middleU;
using quarn::detail::middleV;

constexpr int kNoSlot = -1;

// Smaller trees are searched faster without the lookup table.
constexpr int kMinLookupLeaves = 16;

// Triangles per leaf above which the subdivision has failed, as for identical triangles: a search
// scans a long list anyway, and preparing its tests would take longer than the subdivision.
constexpr std::size_t kMaxTestsPerLeaf = 64;

constexpr double kMaxDouble = std::numeric_limits<double>::max();

}  // namespace

const Triangle* RegionNode::triangle(int index) const {
    QUARN_ASSERT(0 <= index && index < triangleCount);
    const int entry = map->slotInLeaf(*this, index);
    const Triangle* const range = map->buildRanges[static_cast<std::size_t>(build)];
    return range + (map->isOfLastBuild(*this) ? map->slotTriangles[static_cast<std::size_t>(entry)] : entry);
}

// What only searches read.
struct RegionMap::SearchTables {
    std::vector<UVTest> tests;  // by slot; none without an area in UV, or for few and long leaves
    quarn::detail::RegionMapShortcut lookup;

    void clear() {
        tests.clear();
        lookup.clear();
    }
};

RegionMap::RegionMap() : tables(std::make_unique<SearchTables>()) {}
RegionMap::~RegionMap() = default;

// Creates the nodes of a build.
class RegionMap::NodeVisitor {
public:
    struct Checkpoint {
        Statistics statistics;
        std::size_t nodes = 0;
        std::size_t lists = 0;
    };

    NodeVisitor(RegionMap& owner, std::size_t count)
        : map(owner), build(static_cast<int>(owner.buildRanges.size()) - 1), slots(count, kNoSlot) {}

    [[nodiscard]] Checkpoint save() const {
        return {map.statistics, map.nodeList.size(), map.longLists.size()};
    }
    void restore(const Checkpoint& checkpoint) {
        map.statistics = checkpoint.statistics;
        map.nodeList.resize(checkpoint.nodes);
        map.longLists.resize(checkpoint.lists);
    }
    static bool mayCut(int /*count*/) { return true; }
    // Intended: this counter is not restored; a reader would expect it to be part of the
    // checkpoint.
    void giveUp() { ++map.splitsGivenUp; }

    int leaf(const quarn::detail::BoxRange& range, int depth) {
        RegionNode leaf;
        leaf.triangleCount = range.size();
        leaf.build = build;
        leaf.map = &map;
        if (leaf.triangleCount <= RegionNode::kInlineCapacity) {
            std::transform(range.first, range.last, leaf.payload.begin(),
                           [this](int i) { return slotOf(i); });
        } else {
            const std::size_t start = map.longLists.size();
            leaf.payload.front() = static_cast<int>(start);
            map.longLists.resize(start + static_cast<std::size_t>(leaf.triangleCount));
            std::transform(range.first, range.last,
                           map.longLists.begin() + static_cast<std::ptrdiff_t>(start),
                           [this](int i) { return slotOf(i); });
        }
        map.nodeList.push_back(leaf);
        map.countLeaf(leaf.triangleCount, depth);
        return static_cast<int>(map.nodeList.size()) - 1;
    }

    int inner(const std::array<int, 4>& children) {
        RegionNode node;
        node.build = build;
        std::copy(children.begin(), children.end(), node.payload.begin());
        map.nodeList.push_back(node);
        ++map.statistics.innerCount;
        return static_cast<int>(map.nodeList.size()) - 1;
    }

private:
    int slotOf(int triangle) {
        int& slot = slots[static_cast<std::size_t>(triangle)];
        if (slot == kNoSlot) {
            slot = static_cast<int>(map.slotTriangles.size());
            map.slotTriangles.push_back(triangle);
        }
        return slot;
    }

    RegionMap& map;
    int build;
    std::vector<int> slots;  // by triangle; kNoSlot for none yet
};

// Prepares the leaves of the last build for the next build, which reuses the slots.
class RegionMap::EarlierNodes {
public:
    explicit EarlierNodes(RegionMap& owner) : map(owner) {}

    // Replaces each slot by the index of its triangle.
    void replaceSlots() {
        for (std::size_t i = map.firstNode; i < map.nodeList.size(); ++i) {
            RegionNode& node = map.nodeList[i];
            if (node.triangleCount > RegionNode::kInlineCapacity) continue;
            for (int k = 0; k < node.triangleCount; ++k)
                replaceSlot(node.payload[static_cast<std::size_t>(k)]);
        }
        std::for_each(listOf(map.firstEntry), map.longLists.end(),
                      [this](int& entry) { replaceSlot(entry); });
    }

    // Removes lists that are equal to those of the build before. Otherwise a mesh with overlaps
    // that is built again and again would grow faster than its nodes.
    void shareLists() {
        if (map.firstEntry == map.longLists.size()) return;
        if (!std::equal(listOf(map.previousEntry), listOf(map.firstEntry), listOf(map.firstEntry),
                        map.longLists.end())) {
            map.previousEntry = map.firstEntry;
            return;
        }
        const auto size = static_cast<int>(map.firstEntry - map.previousEntry);
        for (std::size_t i = map.firstNode; i < map.nodeList.size(); ++i) {
            RegionNode& node = map.nodeList[i];
            if (node.triangleCount > RegionNode::kInlineCapacity) node.payload.front() -= size;
        }
        map.longLists.resize(map.firstEntry);
    }

private:
    [[nodiscard]] std::vector<int>::iterator listOf(std::size_t entry) const {
        return map.longLists.begin() + static_cast<std::ptrdiff_t>(entry);
    }
    void replaceSlot(int& entry) const { entry = map.slotTriangles[static_cast<std::size_t>(entry)]; }

    RegionMap& map;
};

void RegionMap::rebuild(const Triangle* first, const Triangle* last) {
    statistics = Statistics();
    splitsGivenUp = 0;
    builtTriangles = static_cast<int>(last - first);

    const auto count = static_cast<std::size_t>(builtTriangles);
    buildRanges.push_back(first);
    tables->clear();
    EarlierNodes earlier(*this);
    earlier.replaceSlots();
    earlier.shareLists();
    firstNode = nodeList.size();
    firstEntry = longLists.size();
    slotTriangles.clear();
    slotTriangles.reserve(count);
    cutAll(first, count);
    makeTests();
}

void RegionMap::cutAll(const Triangle* first, std::size_t count) {
    hasUVArea = false;
    std::vector<RegionRect> boxes;
    boxes.reserve(count);
    std::transform(first, first + count, std::back_inserter(boxes), [this](const Triangle& triangle) {
        if (triangle.uvDeterminant != 0.0) hasUVArea = true;
        const auto& [a, b, c] = triangle.vertices;
        return quarn::detail::uvBoxOf(a.uv, b.uv, c.uv);
    });
    wholeRect = quarn::detail::unionOf(boxes);
    NodeVisitor visitor(*this, count);
    quarn::detail::QuadtreeSubdivision<NodeVisitor>(boxes, visitor).run(wholeRect);
}

void RegionMap::clear() {
    statistics = Statistics();
    splitsGivenUp = 0;
    builtTriangles = 0;
    wholeRect = {kMaxDouble, -kMaxDouble, kMaxDouble, -kMaxDouble};
    nodeList.clear();
    buildRanges.clear();
    firstNode = 0;
    longLists.clear();
    firstEntry = 0;
    previousEntry = 0;
    slotTriangles.clear();
    tables->clear();
}

void RegionMap::countLeaf(int triangleCount, int depth) {
    ++statistics.leafCount;
    statistics.maxDepth = std::max(statistics.maxDepth, depth);
    statistics.minDepth = std::min(statistics.minDepth, depth);
    statistics.maxLeafSize = std::max(statistics.maxLeafSize, triangleCount);
    statistics.minLeafSize = std::min(statistics.minLeafSize, triangleCount);
    statistics.leafTriangleTotal += triangleCount;
    if (triangleCount == 0) ++statistics.emptyLeafCount;
}

int RegionMap::slotInLeaf(const RegionNode& leaf, int index) const {
    if (leaf.triangleCount <= RegionNode::kInlineCapacity)
        return leaf.payload[static_cast<std::size_t>(index)];
    return longLists[static_cast<std::size_t>(leaf.payload.front()) + static_cast<std::size_t>(index)];
}

RegionMap::UVTest RegionMap::uvTestOf(const Triangle& triangle) {
    return {triangle.vertices[0].uv, triangle.uvEdge1, triangle.uvEdge2, triangle.uvDeterminant, &triangle};
}

void RegionMap::makeTests() {
    const std::size_t maxTests = kMaxTestsPerLeaf * static_cast<std::size_t>(statistics.leafCount);
    if (hasUVArea && slotTriangles.size() <= maxTests) {
        tables->tests.reserve(slotTriangles.size());
        for (const int triangle : slotTriangles)
            tables->tests.push_back(uvTestOf(buildRanges.back()[triangle]));
    }
    if (statistics.leafCount >= kMinLookupLeaves)
        tables->lookup.build(nodeList, wholeRect, statistics.leafCount);
}

bool RegionMap::UVTest::holds(double u, double v) const {
    if (determinant == 0.0) return false;
    const double du = u - corner[0];
    const double dv = v - corner[1];
    const double a = (du * edge2[1] - dv * edge2[0]) / determinant;
    if (!(a >= 0.0)) return false;
    const double b = (dv * edge1[0] - du * edge1[1]) / determinant;
    return b >= 0.0 && 1.0 >= a + b;
}

void RegionMap::locate(int nodeIndex, const RegionRect& rect, double u, double v,
                       std::optional<const Triangle*>& result) const {
    QUARN_ASSERT(0 <= nodeIndex && static_cast<std::size_t>(nodeIndex) < nodeList.size());
    const RegionNode* node = &nodeList[static_cast<std::size_t>(nodeIndex)];
    RegionRect part = rect;
    if (nodeIndex + 1 == static_cast<int>(nodeList.size()) && rect == wholeRect) {
        if (const auto arrival = tables->lookup.find(u, v)) {
            node = &nodeList[static_cast<std::size_t>(arrival->node)];
            part = arrival->rect;
        }
    }
    while (node->count() < 0) {
        const double midU = middleU(part);
        const double midV = middleV(part);
        const bool isRight = midU < u;
        const bool isBelow = midV < v;
        // NaN, which is on no side, goes right and below.
        const bool isOrdered = (isRight || midU >= u) && (isBelow || midV >= v);
        const bool goesRight = isRight || !isOrdered;
        const bool goesBelow = isBelow || !isOrdered;
        (goesRight ? part.minU : part.maxU) = midU;
        (goesBelow ? part.minV : part.maxV) = midV;
        node = &nodeList[static_cast<std::size_t>(node->child((goesRight ? 1 : 0) + (goesBelow ? 2 : 0)))];
    }
    // Leaves of earlier builds have no prepared tests.
    const bool isOfLast = isOfLastBuild(*node);
    if (isOfLast && !hasUVArea) return;
    const std::size_t testCount = isOfLast ? tables->tests.size() : 0;
    for (int i = 0; i < node->count(); ++i) {
        const auto slot = static_cast<std::size_t>(slotInLeaf(*node, i));
        const UVTest& uvTest = slot < testCount ? tables->tests[slot] : uvTestOf(*node->triangle(i));
        if (!uvTest.holds(u, v)) continue;
        result = uvTest.triangle;
        return;
    }
}
