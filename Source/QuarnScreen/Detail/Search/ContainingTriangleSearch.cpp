#include "ContainingTriangleSearch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "DelayedVisits.h"
#include "TriangleContainment.h"

namespace quarn::detail {
namespace {

// A position on a mesh without overlaps has about three candidates.
constexpr std::size_t kCandidatesAhead = 16;

bool isNumber(const Point<double, 3>& point) {
    return point == point;
}

bool isFinite(const Point<double, 3>& point) {
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

// Prefetches the fields that testContainment() reads.
void prefetch(const Triangle& triangle) {
    __builtin_prefetch(&triangle.vertices[0].position);
    __builtin_prefetch(&triangle.normal);
    __builtin_prefetch(&triangle.edge2);
}

}  // namespace

void ContainingTriangleSearch::build(const std::vector<Triangle>& triangles) {
    // If the build runs out of memory, no index of the previous tree may remain.
    buckets = TriangleBuckets();
    boxes = ContainmentBounds();
    centroids = NearestCentroidSearch();
    firstVisit = FirstVisit();
    buildOver(centroidTree, triangles);
    buckets.build(centroidTree);
    boxes.build(centroidTree, buckets, triangles);
    centroids.build(centroidTree, buckets);
    firstVisit.build(centroidTree);
    isOrdered = std::all_of(triangles.begin(), triangles.end(),
                            [](const Triangle& triangle) { return isNumber(triangle.centroid); });
}

const Triangle* ContainingTriangleSearch::findNearest(const Point<double, 3>& point) const {
    if (!isOrdered || !isFinite(point) || centroidTree.size() == 0) return centroidTree.findNearest(point);
    return centroids.find(centroidTree, buckets, point);
}

const Triangle* ContainingTriangleSearch::walkTree(const Point<double, 3>& point) const {
    return centroidTree.findNearestIf(
        point, [&](const Triangle* triangle) { return testContainment(*triangle, point).contains; });
}

// A search of the tree prunes nothing before its first match. Therefore the bounds yield the
// candidates, and the tree's visit order breaks ties between equal distances.
//
// Calls beforeTests() if there are candidates, while their memory is on its way.
template <class BeforeTests>
const Triangle* ContainingTriangleSearch::findAmongCandidates(const Point<double, 3>& point,
                                                              BeforeTests&& beforeTests) const {
    if (!isOrdered) return walkTree(point);
    std::optional<std::size_t> best;
    double bestSquared = std::numeric_limits<double>::max();
    const auto test = [&](std::uint32_t slot) {
        const double squared = centroidTree.squaredDistance(slot, point);
        const bool isBetter = bestSquared > squared || (best && bestSquared == squared &&
                                                        centroidTree.isMetBefore(slot, *best, point));
        if (!isBetter || !testContainment(*centroidTree.valueAt(slot), point).contains) return;
        bestSquared = squared;
        best = slot;
    };
    // Triangles are far apart in memory, so prefetch the first candidates before any is tested.
    DelayedVisits<kCandidatesAhead> prefetched;
    DelayedVisits<kCandidatesAhead> found;
    const auto prefetchTriangle = [&](std::uint32_t slot) {
        prefetch(*centroidTree.valueAt(slot));
        prefetched.add(slot, test);
    };
    boxes.visitCandidates(buckets, point, [&](std::uint32_t slot) {
        __builtin_prefetch(&centroidTree.valueAt(slot));
        found.add(slot, prefetchTriangle);
    });
    if (!found.isEmpty()) beforeTests();
    found.visitAll(prefetchTriangle);
    prefetched.visitAll(test);
    return best ? centroidTree.valueAt(*best) : nullptr;
}

const Triangle* ContainingTriangleSearch::findContaining(const Point<double, 3>& point) const {
    return findAmongCandidates(point, [] {});
}

ContainingTriangleSearch::Finding ContainingTriangleSearch::find(const Point<double, 3>& point) const {
    std::optional<std::size_t> firstSlot;
    const auto prefetchFirst = [&] {
        firstSlot = firstVisit.slotOf(centroidTree, point);
        prefetch(*centroidTree.valueAt(*firstSlot));
    };
    const Triangle* const triangle = findAmongCandidates(point, prefetchFirst);
    if (triangle == nullptr) return {};
    return {triangle, firstSlot ? rejectedUVFrom(*firstSlot, point) : firstRejectedUV(point)};
}

std::optional<Point<double, 2>> ContainingTriangleSearch::firstRejectedUV(
    const Point<double, 3>& point) const {
    if (centroidTree.size() == 0) return {};
    return rejectedUVFrom(firstVisit.slotOf(centroidTree, point), point);
}

// Mostly it is the triangle that the search visits first.
std::optional<Point<double, 2>> ContainingTriangleSearch::rejectedUVFrom(
    std::size_t firstSlot, const Point<double, 3>& point) const {
    if (std::numeric_limits<double>::max() > centroidTree.squaredDistance(firstSlot, point)) {
        const Triangle& triangle = *centroidTree.valueAt(firstSlot);
        const Containment containment = testContainment(triangle, point);
        if (!containment.contains) return triangle.uvAt(containment.a, containment.b);
    }
    firstVisit.prefetchPath(centroidTree, point);
    return walkToFirstRejected(point);
}

std::optional<Point<double, 2>> ContainingTriangleSearch::walkToFirstRejected(
    const Point<double, 3>& point) const {
    std::optional<Point<double, 2>> rejected;
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
