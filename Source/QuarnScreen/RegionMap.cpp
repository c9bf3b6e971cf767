#include <QuarnScreen/RegionMap.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr int kMaxDepth = 18;
constexpr int kRoomyLeafSize = 8;
constexpr int kFirstDepth = 1;
constexpr int kNoParent = std::numeric_limits<int>::max();
constexpr int kGivenUp = -1;
constexpr int kQuadrants = 4;

constexpr double kGreatest = std::numeric_limits<double>::max();

// Touching counts as overlap, so a triangle on a split line belongs to both sides.
bool overlap(const RegionRect& rect, const RegionRect& box) {
    return !(rect.minU > box.maxU || box.minU > rect.maxU || rect.minV > box.maxV || box.minV > rect.maxV);
}

double middleU(const RegionRect& rect) {
    return (rect.maxU - rect.minU) * 0.5 + rect.minU;
}
double middleV(const RegionRect& rect) {
    return (rect.maxV - rect.minV) * 0.5 + rect.minV;
}

}  // namespace

RegionMap::RegionMap() = default;
RegionMap::~RegionMap() = default;

RegionRect RegionMap::uvBox(const Triangle& triangle) {
    const auto& [a, b, c] = triangle.vertices;
    return {std::min(std::min(a.uv[0], b.uv[0]), c.uv[0]), std::max(std::max(a.uv[0], b.uv[0]), c.uv[0]),
            std::min(std::min(a.uv[1], b.uv[1]), c.uv[1]), std::max(std::max(a.uv[1], b.uv[1]), c.uv[1])};
}

RegionRect RegionMap::quadrantOf(const RegionRect& rect, int quadrant) {
    const double midU = middleU(rect);
    const double midV = middleV(rect);
    RegionRect part = rect;
    ((quadrant & 1) == 0 ? part.maxU : part.minU) = midU;
    ((quadrant & 2) == 0 ? part.maxV : part.minV) = midV;
    return part;
}

void RegionMap::rebuild(const Triangle* first, const Triangle* last) {
    statistics = Statistics();
    splitsGivenUp = 0;
    builtTriangles = static_cast<int>(last - first);
    wholeRect = {kGreatest, -kGreatest, kGreatest, -kGreatest};

    // A build that ran out of memory leaves its scratch behind.
    bounds.clear();
    tests.clear();
    triangles = first;
    bounds.reserve(static_cast<std::size_t>(builtTriangles));
    for (const Triangle* triangle = first; triangle != last; ++triangle) {
        const RegionRect box = uvBox(*triangle);
        bounds.push_back(box);
        wholeRect = {std::min(wholeRect.minU, box.minU), std::max(wholeRect.maxU, box.maxU),
                     std::min(wholeRect.minV, box.minV), std::max(wholeRect.maxV, box.maxV)};
    }

    firstTest = leafTriangles.size();
    std::vector<int> indices(bounds.size());
    std::iota(indices.begin(), indices.end(), 0);
    buildNode({indices.data(), indices.data() + indices.size()}, wholeRect, kFirstDepth, kNoParent);
    makeTests();
    bounds.clear();
    triangles = nullptr;
}

// Moves the triangles that overlap the rectangle to the front; the order decides which of several triangles
// is found.
int* RegionMap::partition(const Range& range, const RegionRect& rect) const {
    const auto overlaps = [&](int index) { return overlap(rect, bounds[static_cast<std::size_t>(index)]); };
    int* i = range.first;
    int* j = range.last;
    while (i != j) {
        if (overlaps(*i)) {
            ++i;
            continue;
        }
        do --j;
        while (j != i && !overlaps(*j));
        if (j == i) break;
        std::swap(*i, *j);
        ++i;
    }
    return i;
}

int RegionMap::buildNode(const Range& range, const RegionRect& rect, int depth, int parentCount) {
    const int count = range.size();
    if (count <= kRoomyLeafSize || depth >= kMaxDepth) return makeLeaf(range, depth);

    const Statistics savedStatistics = statistics;
    const std::size_t savedNodes = nodeList.size();
    const std::size_t savedTriangles = leafTriangles.size();
    RegionNode node;
    for (int quadrant = 0; quadrant < kQuadrants; ++quadrant) {
        const RegionRect part = quadrantOf(rect, quadrant);
        int* const end = partition(range, part);
        // A second level in a row without reduction: the parent becomes a leaf.
        if (end == range.last && count == parentCount) return kGivenUp;

        const int child = buildNode({range.first, end}, part, depth + 1, count);
        if (child == kGivenUp) {
            // Intended: this counter alone is not set back.
            ++splitsGivenUp;
            statistics = savedStatistics;
            nodeList.resize(savedNodes);
            leafTriangles.resize(savedTriangles);
            return makeLeaf(range, depth);
        }
        node.children[static_cast<std::size_t>(quadrant)] = child;
    }
    nodeList.push_back(node);
    ++statistics.innerCount;
    return static_cast<int>(nodeList.size()) - 1;
}

int RegionMap::makeLeaf(const Range& range, int depth) {
    RegionNode leaf;
    leaf.triangleCount = range.size();
    leaf.firstTriangle = leafTriangles.size();
    leaf.leafTriangles = &leafTriangles;
    for (const int* index = range.first; index != range.last; ++index)
        leafTriangles.push_back(triangles + *index);
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

RegionMap::UVTest RegionMap::uvTestOf(const Triangle& triangle) {
    return {triangle.vertices[0].uv, triangle.uvEdge1, triangle.uvEdge2, triangle.uvDeterminant};
}

void RegionMap::makeTests() {
    tests.reserve(leafTriangles.size() - firstTest);
    for (std::size_t i = firstTest; i < leafTriangles.size(); ++i)
        tests.push_back(uvTestOf(*leafTriangles[i]));
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
    const std::size_t first = node->firstTriangle;
    for (std::size_t i = first; i < first + static_cast<std::size_t>(node->count()); ++i) {
        // Leaves of earlier builds have no ready tests; for them the difference is too large or wraps.
        const std::size_t test = i - firstTest;
        if (!(test < tests.size() ? tests[test] : uvTestOf(*leafTriangles[i])).holds(u, v)) continue;
        result = leafTriangles[i];
        return;
    }
}
