#include <QuarnScreen/RegionMap.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Detail/Search/QuadtreeLookup.h>
#include <QuarnScreen/Detail/Search/QuadtreeSubdivision.h>

namespace {

using quarn::detail::middleU;
using quarn::detail::middleV;

constexpr int kNoSlot = -1;

constexpr double kMaxDouble = std::numeric_limits<double>::max();

}  // namespace

const Triangle* RegionNode::triangle(int index) const {
    QUARN_ASSERT(0 <= index && index < triangleCount);
    return map->slotTriangles[static_cast<std::size_t>(map->slotInLeaf(*this, index))];
}

RegionMap::RegionMap() : lookup(std::make_unique<quarn::detail::QuadtreeLookup>()) {}
RegionMap::~RegionMap() = default;

// Creates the nodes of a build.
class RegionMap::NodeVisitor {
public:
    struct Checkpoint {
        Statistics statistics;
        std::size_t nodes = 0;
        std::size_t lists = 0;
    };

    NodeVisitor(RegionMap& owner, const Triangle* first, std::size_t count)
        : map(owner), triangles(first), slots(count, kNoSlot) {}

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
        leaf.map = &map;
        if (leaf.triangleCount <= RegionNode::kInlineCapacity) {
            std::transform(range.first, range.last, leaf.payload.begin(),
                           [this](int i) { return slotOf(i); });
        } else {
            leaf.payload.front() = static_cast<int>(map.longLists.size());
            std::transform(range.first, range.last, std::back_inserter(map.longLists),
                           [this](int i) { return slotOf(i); });
        }
        map.nodeList.push_back(leaf);
        map.countLeaf(leaf.triangleCount, depth);
        return static_cast<int>(map.nodeList.size()) - 1;
    }

    int inner(const std::array<int, 4>& children) {
        RegionNode node;
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
            map.slotTriangles.push_back(triangles + triangle);
        }
        return slot;
    }

    RegionMap& map;
    const Triangle* triangles;
    std::vector<int> slots;  // by triangle; kNoSlot for none yet
};

void RegionMap::rebuild(const Triangle* first, const Triangle* last) {
    statistics = Statistics();
    splitsGivenUp = 0;
    builtTriangles = static_cast<int>(last - first);

    const auto count = static_cast<std::size_t>(builtTriangles);
    tests.clear();
    lookup->clear();
    firstSlot = slotTriangles.size();
    slotTriangles.reserve(firstSlot + count);
    cutAll(first, count);
    makeTests();
    lookup->build(nodeList, wholeRect, statistics.leafCount);
}

void RegionMap::cutAll(const Triangle* first, std::size_t count) {
    std::vector<RegionRect> boxes(count);
    std::transform(first, first + count, boxes.begin(), [](const Triangle& triangle) {
        const auto& [a, b, c] = triangle.vertices;
        return quarn::detail::uvBoxOf(a.uv, b.uv, c.uv);
    });
    wholeRect = quarn::detail::unionOf(boxes);
    NodeVisitor visitor(*this, first, count);
    quarn::detail::QuadtreeSubdivision<NodeVisitor>(boxes, visitor).run(wholeRect);
}

void RegionMap::clear() {
    statistics = Statistics();
    splitsGivenUp = 0;
    builtTriangles = 0;
    wholeRect = {kMaxDouble, -kMaxDouble, kMaxDouble, -kMaxDouble};
    nodeList.clear();
    longLists.clear();
    slotTriangles.clear();
    tests.clear();
    lookup->clear();
    firstSlot = 0;
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
    tests.reserve(slotTriangles.size() - firstSlot);
    for (std::size_t i = firstSlot; i < slotTriangles.size(); ++i)
        tests.push_back(uvTestOf(*slotTriangles[i]));
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
        if (const auto arrival = lookup->find(u, v)) {
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
    for (int i = 0; i < node->count(); ++i) {
        const auto slot = static_cast<std::size_t>(slotInLeaf(*node, i));
        // Leaves of earlier builds have no prepared tests. For their slots the difference wraps
        // around.
        const std::size_t test = slot - firstSlot;
        const UVTest& uvTest = test < tests.size() ? tests[test] : uvTestOf(*slotTriangles[slot]);
        if (!uvTest.holds(u, v)) continue;
        result = uvTest.triangle;
        return;
    }
}
