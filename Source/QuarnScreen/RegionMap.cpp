#include <QuarnScreen/RegionMap.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "Detail/RegionShortcuts.h"

namespace {

constexpr int kMaxDepth = 18;
constexpr int kRoomyLeafSize = 8;
constexpr int kFirstDepth = 1;
constexpr int kNoParent = std::numeric_limits<int>::max();
constexpr int kGivenUp = -1;
constexpr int kQuadrants = 4;
constexpr int kNoSlot = -1;

constexpr double kGreatest = std::numeric_limits<double>::max();

double middleU(const RegionRect& rect) {
    return (rect.maxU - rect.minU) * 0.5 + rect.minU;
}
double middleV(const RegionRect& rect) {
    return (rect.maxV - rect.minV) * 0.5 + rect.minV;
}

RegionRect quadrantOf(const RegionRect& rect, double midU, double midV, int quadrant) {
    RegionRect part = rect;
    ((quadrant & 1) == 0 ? part.maxU : part.minU) = midU;
    ((quadrant & 2) == 0 ? part.maxV : part.minV) = midV;
    return part;
}

}  // namespace

const Triangle* RegionNode::triangle(int index) const {
    return map->slotTriangles[static_cast<std::size_t>(map->slotInLeaf(*this, index))];
}

RegionMap::RegionMap() : shortcuts(std::make_unique<quarn::RegionShortcuts>()) {}
RegionMap::~RegionMap() = default;

RegionRect RegionMap::uvBox(const Triangle& triangle) {
    const auto& [a, b, c] = triangle.vertices;
    return {std::min(std::min(a.uv[0], b.uv[0]), c.uv[0]), std::max(std::max(a.uv[0], b.uv[0]), c.uv[0]),
            std::min(std::min(a.uv[1], b.uv[1]), c.uv[1]), std::max(std::max(a.uv[1], b.uv[1]), c.uv[1])};
}

void RegionMap::rebuild(const Triangle* first, const Triangle* last) {
    statistics = Statistics();
    splitsGivenUp = 0;
    builtTriangles = static_cast<int>(last - first);
    wholeRect = {kGreatest, -kGreatest, kGreatest, -kGreatest};

    const auto count = static_cast<std::size_t>(builtTriangles);
    tests.clear();
    shortcuts->clear();
    scratch = Scratch();
    scratch.triangles = first;
    scratch.slots.assign(count, kNoSlot);
    scratch.misplaced.resize(count);
    scratch.quadrants.resize(kMaxDepth);
    scratch.bounds.reserve(count);
    for (const Triangle* triangle = first; triangle != last; ++triangle) {
        const RegionRect box = uvBox(*triangle);
        scratch.bounds.push_back(box);
        wholeRect = {std::min(wholeRect.minU, box.minU), std::max(wholeRect.maxU, box.maxU),
                     std::min(wholeRect.minV, box.minV), std::max(wholeRect.maxV, box.maxV)};
    }

    firstSlot = slotTriangles.size();
    slotTriangles.reserve(firstSlot + count);
    std::vector<int> indices(count);
    std::iota(indices.begin(), indices.end(), 0);
    buildNode({indices.data(), indices.data() + indices.size()}, wholeRect, kFirstDepth, kNoParent);
    makeTests();
    shortcuts->build(nodeList, wholeRect, statistics.leafCount);
    scratch = Scratch();
}

void RegionMap::clear() {
    statistics = Statistics();
    splitsGivenUp = 0;
    builtTriangles = 0;
    wholeRect = {kGreatest, -kGreatest, kGreatest, -kGreatest};
    nodeList.clear();
    longLists.clear();
    slotTriangles.clear();
    tests.clear();
    shortcuts->clear();
    firstSlot = 0;
}

// Notes for each triangle which quadrants it overlaps, and counts them by quadrant. Touching counts as overlap, so a
// triangle on a split line belongs to both sides. The triangles of a node overlap its rectangle, so that only the two
// inner sides of a quadrant tell.
std::array<int, 4> RegionMap::findQuadrants(const Range& range, double midU, double midV, int depth) {
    std::vector<std::uint8_t>& quadrants = scratch.quadrants[static_cast<std::size_t>(depth)];
    quadrants.resize(scratch.bounds.size());
    std::array<int, 4> counts{};
    for (const int* i = range.first; i != range.last; ++i) {
        const RegionRect& box = scratch.bounds[static_cast<std::size_t>(*i)];
        const int left = static_cast<int>(!(box.minU > midU));
        const int right = static_cast<int>(!(midU > box.maxU));
        const int above = static_cast<int>(!(box.minV > midV));
        const int below = static_cast<int>(!(midV > box.maxV));
        const std::array<int, 4> overlaps = {left & above, right & above, left & below, right & below};
        for (std::size_t quadrant = 0; quadrant < counts.size(); ++quadrant)
            counts[quadrant] += overlaps[quadrant];
        quadrants[static_cast<std::size_t>(*i)] =
            static_cast<std::uint8_t>(overlaps[0] + 2 * overlaps[1] + 4 * overlaps[2] + 8 * overlaps[3]);
    }
    return counts;
}

// Moves the triangles that overlap a quadrant to the front, and returns where the others begin. The order decides which
// of several triangles is found: the first from the front that does not belong there changes places with the first from
// the back that does, and so on. Both kinds are gathered before, as that needs no branch that depends on the data.
int* RegionMap::partition(const Range& range, int overlapping, int quadrant, int depth) {
    const std::vector<std::uint8_t>& quadrants = scratch.quadrants[static_cast<std::size_t>(depth)];
    const auto overlaps = [&](int triangle) {
        return (quadrants[static_cast<std::size_t>(triangle)] >> quadrant) & 1;
    };
    int* const first = range.first;
    int* const fromFront = scratch.misplaced.data();
    int misplaced = 0;
    for (int i = 0; i < overlapping; ++i) {
        fromFront[misplaced] = i;
        misplaced += 1 - overlaps(first[i]);
    }
    int* const fromBack = fromFront + misplaced;
    int found = 0;
    for (int i = range.size() - 1; found < misplaced; --i) {
        fromBack[found] = i;
        found += overlaps(first[i]);
    }
    for (int k = 0; k < misplaced; ++k) std::swap(first[fromFront[k]], first[fromBack[k]]);
    return first + overlapping;
}

int RegionMap::buildNode(const Range& range, const RegionRect& rect, int depth, int parentCount) {
    const int count = range.size();
    if (count <= kRoomyLeafSize || depth >= kMaxDepth) return makeLeaf(range, depth);

    const Statistics savedStatistics = statistics;
    const std::size_t savedNodes = nodeList.size();
    const std::size_t savedLists = longLists.size();
    const double midU = middleU(rect);
    const double midV = middleV(rect);
    const std::array<int, 4> overlapping = findQuadrants(range, midU, midV, depth);
    RegionNode node;
    for (int quadrant = 0; quadrant < kQuadrants; ++quadrant) {
        int* const end = partition(range, overlapping[static_cast<std::size_t>(quadrant)], quadrant, depth);
        // A second level in a row without reduction: the parent becomes a leaf.
        if (end == range.last && count == parentCount) return kGivenUp;

        const RegionRect part = quadrantOf(rect, midU, midV, quadrant);
        const int child = buildNode({range.first, end}, part, depth + 1, count);
        if (child == kGivenUp) {
            // Intended: this counter alone is not set back.
            ++splitsGivenUp;
            statistics = savedStatistics;
            nodeList.resize(savedNodes);
            longLists.resize(savedLists);
            return makeLeaf(range, depth);
        }
        node.payload[static_cast<std::size_t>(quadrant)] = child;
    }
    nodeList.push_back(node);
    ++statistics.innerCount;
    return static_cast<int>(nodeList.size()) - 1;
}

int RegionMap::makeLeaf(const Range& range, int depth) {
    RegionNode leaf;
    leaf.triangleCount = range.size();
    leaf.map = this;
    if (leaf.triangleCount <= RegionNode::kRoomInPlace) {
        std::transform(range.first, range.last, leaf.payload.begin(), [this](int i) { return slotOf(i); });
    } else {
        leaf.payload.front() = static_cast<int>(longLists.size());
        std::transform(range.first, range.last, std::back_inserter(longLists),
                       [this](int i) { return slotOf(i); });
    }
    nodeList.push_back(leaf);

    ++statistics.leafCount;
    statistics.maxDepth = std::max(statistics.maxDepth, depth);
    statistics.minDepth = std::min(statistics.minDepth, depth);
    statistics.maxLeafSize = std::max(statistics.maxLeafSize, leaf.triangleCount);
    statistics.minLeafSize = std::min(statistics.minLeafSize, leaf.triangleCount);
    statistics.leafTriangleTotal += leaf.triangleCount;
    if (leaf.triangleCount == 0) ++statistics.emptyLeafCount;
    return static_cast<int>(nodeList.size()) - 1;
}

int RegionMap::slotOf(int triangle) {
    int& slot = scratch.slots[static_cast<std::size_t>(triangle)];
    if (slot == kNoSlot) {
        slot = static_cast<int>(slotTriangles.size());
        slotTriangles.push_back(scratch.triangles + triangle);
    }
    return slot;
}

int RegionMap::slotInLeaf(const RegionNode& leaf, int index) const {
    if (leaf.triangleCount <= RegionNode::kRoomInPlace) return leaf.payload[static_cast<std::size_t>(index)];
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
    const RegionNode* node = &nodeList[static_cast<std::size_t>(nodeIndex)];
    RegionRect part = rect;
    if (nodeIndex + 1 == static_cast<int>(nodeList.size()) && rect == wholeRect) {
        if (const auto arrival = shortcuts->find(u, v)) {
            node = &nodeList[static_cast<std::size_t>(arrival->node)];
            part = arrival->rect;
        }
    }
    while (node->count() < 0) {
        const double midU = middleU(part);
        const double midV = middleV(part);
        const bool isRight = midU < u;
        const bool isBelow = midV < v;
        // What no side holds, a NaN, goes right and below.
        const bool isOrdered = (isRight || midU >= u) && (isBelow || midV >= v);
        const bool goesRight = isRight || !isOrdered;
        const bool goesBelow = isBelow || !isOrdered;
        (goesRight ? part.minU : part.maxU) = midU;
        (goesBelow ? part.minV : part.maxV) = midV;
        node = &nodeList[static_cast<std::size_t>(node->child((goesRight ? 1 : 0) + (goesBelow ? 2 : 0)))];
    }
    for (int i = 0; i < node->count(); ++i) {
        const auto slot = static_cast<std::size_t>(slotInLeaf(*node, i));
        // Leaves of earlier builds have no ready tests; for them the difference wraps.
        const std::size_t test = slot - firstSlot;
        const UVTest& uvTest = test < tests.size() ? tests[test] : uvTestOf(*slotTriangles[slot]);
        if (!uvTest.holds(u, v)) continue;
        result = uvTest.triangle;
        return;
    }
}
