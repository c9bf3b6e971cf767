#include "ContainingTriangleSearch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

#include "TriangleContainment.h"

namespace quarn::detail {
namespace {

// A position on a mesh without overlaps has about three candidates.
constexpr std::size_t kCandidatesAhead = 16;

bool isNumber(const Point<double, 3>& point) {
    return point == point;
}

// Prefetches the fields that testContainment() reads.
void prefetch(const Triangle& triangle) {
    __builtin_prefetch(&triangle.vertices[0].position);
    __builtin_prefetch(&triangle.normal);
    __builtin_prefetch(&triangle.edge2);
}

}  // namespace

void ContainingTriangleSearch::build(const std::vector<Triangle>& triangles) {
    // If the build runs out of memory, no bounds of the previous tree may remain.
    boxes = ContainmentBounds();
    buildOver(centroidTree, triangles);
    boxes.build(centroidTree, triangles);
    isOrdered = std::all_of(triangles.begin(), triangles.end(),
                            [](const Triangle& triangle) { return isNumber(triangle.centroid); });
}

// A search of the tree prunes nothing before its first match. Therefore the bounds yield the
// candidates, and the tree's visit order breaks ties between equal distances.
const Triangle* ContainingTriangleSearch::findContaining(const Point<double, 3>& point) const {
    if (!isOrdered) return walkTree(point);
    std::optional<std::size_t> best;
    double bestSquared = std::numeric_limits<double>::max();
    const auto test = [&](std::size_t slot) {
        const double squared = centroidTree.squaredDistance(slot, point);
        const bool isBetter = bestSquared > squared || (best && bestSquared == squared &&
                                                        centroidTree.isMetBefore(slot, *best, point));
        if (!isBetter || !testContainment(*centroidTree.valueAt(slot), point).contains) return;
        bestSquared = squared;
        best = slot;
    };
    // Triangles are far apart in memory, so prefetch the first candidates before any is tested.
    std::array<std::size_t, kCandidatesAhead> ahead{};
    std::size_t aheadCount = 0;
    boxes.visitCandidates(centroidTree, point, [&](std::size_t slot) {
        if (aheadCount == ahead.size()) {
            test(slot);
            return;
        }
        prefetch(*centroidTree.valueAt(slot));
        ahead[aheadCount++] = slot;
    });
    for (std::size_t i = 0; i < aheadCount; ++i) test(ahead[i]);
    return best ? centroidTree.valueAt(*best) : nullptr;
}

const Triangle* ContainingTriangleSearch::walkTree(const Point<double, 3>& point) const {
    return centroidTree.findNearestIf(
        point, [&](const Triangle* triangle) { return testContainment(*triangle, point).contains; });
}

std::optional<Point<double, 2>> ContainingTriangleSearch::firstRejectedUV(
    const Point<double, 3>& point) const {
    std::optional<Point<double, 2>> rejected;
    if (centroidTree.size() == 0) return rejected;
    const auto accept = [&](const Triangle* triangle) {
        if (rejected) return false;
        const Containment containment = testContainment(*triangle, point);
        if (!containment.contains) rejected = triangle->uvAt(containment.a, containment.b);
        return containment.contains;
    };
    (void)centroidTree.findNearestIf(point, accept, [&](std::size_t) { return rejected.has_value(); });
    return rejected;
}

std::vector<Point<double, 3>> ContainingTriangleSearch::getNearestNormals(
    const Point<double, 3>& point, const Point<double, 3>& /*direction*/, int count) const {
    std::vector<Point<double, 3>> normals;
    for (const Triangle* triangle : centroidTree.findKNearest(point, count))
        normals.push_back(triangle->normal);
    return normals;
}

}  // namespace quarn::detail
