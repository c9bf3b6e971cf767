#include <QuarnScreen/RegionMap.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

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

RegionMap::RegionMap() = default;
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
    scratch = Scratch();
    scratch.triangles = first;
    scratch.slots.assign(count, kNoSlot);
    scratch.misplaced.resize(count);
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
    firstSlot = 0;
}

// Moves the triangles that overlap to the front, and returns where the others begin. The order decides which of
// several triangles is found: the first from the front that does not belong there changes places with the first from
// the back that does, and so on. Both kinds are gathered before, as that needs no branch that depends on the data.
template <class Overlaps>
int* RegionMap::partition(const Range& range, Overlaps overlaps) {
    const int count = range.size();
    int* const first = range.first;
    int front = 0;
    for (int i = 0; i < count; ++i) front += static_cast<int>(overlaps(first[i]));

    int* const fromFront = scratch.misplaced.data();
    int misplaced = 0;
    for (int i = 0; i < front; ++i) {
        fromFront[misplaced] = i;
        misplaced += static_cast<int>(!overlaps(first[i]));
    }
    int* const fromBack = fromFront + misplaced;
    int found = 0;
    for (int i = count - 1; found < misplaced; --i) {
        fromBack[found] = i;
        found += static_cast<int>(overlaps(first[i]));
    }
    for (int k = 0; k < misplaced; ++k) std::swap(first[fromFront[k]], first[fromBack[k]]);
    return first + front;
}

// Touching counts as overlap, so a triangle on a split line belongs to both sides. The triangles of a node overlap its
// rectangle, so that only the two inner sides of a quadrant tell.
int* RegionMap::partitionByQuadrant(const Range& range, double midU, double midV, int quadrant) {
    const auto box = [this](int index) -> const RegionRect& {
        return scratch.bounds[static_cast<std::size_t>(index)];
    };
    const auto left = [&](int i) { return !(box(i).minU > midU); };
    const auto right = [&](int i) { return !(midU > box(i).maxU); };
    const auto above = [&](int i) { return !(box(i).minV > midV); };
    const auto below = [&](int i) { return !(midV > box(i).maxV); };
    switch (quadrant) {
        case 0:
            return partition(range, [&](int i) { return left(i) & above(i); });
        case 1:
            return partition(range, [&](int i) { return right(i) & above(i); });
        case 2:
            return partition(range, [&](int i) { return left(i) & below(i); });
        default:
            return partition(range, [&](int i) { return right(i) & below(i); });
    }
}

int RegionMap::buildNode(const Range& range, const RegionRect& rect, int depth, int parentCount) {
    const int count = range.size();
    if (count <= kRoomyLeafSize || depth >= kMaxDepth) return makeLeaf(range, depth);

    const Statistics savedStatistics = statistics;
    const std::size_t savedNodes = nodeList.size();
    const std::size_t savedLists = longLists.size();
    const double midU = middleU(rect);
    const double midV = middleV(rect);
    RegionNode node;
    for (int quadrant = 0; quadrant < kQuadrants; ++quadrant) {
        int* const end = partitionByQuadrant(range, midU, midV, quadrant);
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
    return longLists[static_cast<std::size_t>(leaf.payload.front() + index)];
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
