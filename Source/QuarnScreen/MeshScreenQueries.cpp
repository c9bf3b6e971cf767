// Queries by rays and positions, and beyond the mesh.
#include <QuarnScreen/MeshScreen.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include <QuarnScreen/Detail/Editing/Crease.h>
#include <QuarnScreen/Detail/Mesh/MeshIndexes.h>
#include <QuarnScreen/Detail/Mesh/RayHits.h>
#include <QuarnScreen/Detail/Platform/Sign.h>
#include <QuarnScreen/Lines.h>

namespace {

// Limits for snapping to a crease: the maximum number of levels, the minimum number of triangles
// per level, and the maximum distance in the mesh's unit.
constexpr int kMaxCreaseLevels = 5;
constexpr std::size_t kTrianglesPerCreaseLevel = 100;
constexpr double kSnapDistance = 0.5;

// Returns the position on the ray that is nearest to a point, not before the ray's origin.
Point<double, 3> projectionOnRay(const Ray& ray, const Point<double, 3>& point) {
    const Point<double, 3> direction = ray.target - ray.origin;
    const double squared = dot(direction, direction);
    if (squared == 0.0) return ray.origin;
    const double t = dot(point - ray.origin, direction) / squared;
    return t > 0.0 ? ray.origin + t * direction : ray.origin;
}

// The position on a ray that is nearest to a segment.
struct NearestOnRay {
    bool exists = false;
    Point<double, 3> onRay;
    double squared = 0.0;
};

NearestOnRay nearestOnRay(const Ray& ray, const Point<double, 3>& a, const Point<double, 3>& b) {
    Point<double, 3> onSegment;
    Point<double, 3> onRay;
    const bool exists =
        closestPointsBetweenLines(a, b, ray.origin, ray.target, onSegment, onRay, true, true, true, false);
    const Point<double, 3> gap = onSegment - onRay;
    return {exists, onRay, dot(gap, gap)};
}

}  // namespace

IntersectionSet MeshScreen::intersect(const Point<double, 3>& start, const Point<double, 3>& end) const {
    return intersectInternal(start, end);
}

IntersectionSet MeshScreen::intersectInternal(const Point<double, 3>& start,
                                              const Point<double, 3>& end) const {
    quarn::detail::RayHits found;
    quarn::detail::RayHitSearch(*scene, triangles).find({start, end}, found);
    IntersectionSet hits;
    for (const Intersection& hit : found.found()) hits.add(hit);
    // Sorting allocates memory.
    if (hits.count() > 1) hits.sort(start, end);
    return hits;
}

IntersectionSet MeshScreen::intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& start,
                                                                     const Point<double, 3>& end,
                                                                     int normalSign) const {
    IntersectionSet matching;
    for (const Intersection& hit : intersectInternal(start, end)) {
        if (normalSign == 0 || hit.normalSign == normalSign) matching.add(hit);
    }
    return matching.empty() ? IntersectionSet(rayPointNearestBoundary({start, end}, normalSign)) : matching;
}

// Returns the index of the boundary point whose direction from the ray's target is most parallel to
// the ray.
// Intended: a point straight behind counts as much as one straight ahead.
std::optional<std::size_t> MeshScreen::findBoundaryPoint(const Ray& ray, int normalSign) const {
    const Point<double, 3> direction = normalized(ray.target - ray.origin);
    std::optional<std::size_t> best;
    double bestAlignment = -1.0;
    for (std::size_t i = 0; i < boundary.points.size(); ++i) {
        const double alignment = std::abs(dot(normalized(boundary.points[i] - ray.target), direction));
        if (!(alignment > bestAlignment)) continue;
        if (normalSign != 0) {
            const Triangle* const triangle = boundary.triangles[i];
            if (triangle == nullptr || quarn::detail::signOf(dot(triangle->normal, direction)) != normalSign)
                continue;
        }
        bestAlignment = alignment;
        best = i;
    }
    return best;
}

Point<double, 3> MeshScreen::rayPointNearestBoundary(const Ray& ray, int normalSign) const {
    const std::optional<std::size_t> chosen = findBoundaryPoint(ray, normalSign);
    if (!chosen) return {};
    const std::vector<Point<double, 3>>& points = boundary.points;
    const std::size_t i = *chosen;
    if (points.size() == 1) return projectionOnRay(ray, points[i]);

    const NearestOnRay before = nearestOnRay(ray, points[i == 0 ? points.size() - 1 : i - 1], points[i]);
    // Intended: the last point has no successor; a reader would expect the boundary to be closed.
    const NearestOnRay after =
        i + 1 < points.size() ? nearestOnRay(ray, points[i], points[i + 1]) : NearestOnRay{false, {}, 0.0};
    if (!before.exists) return after.exists ? after.onRay : points[i];
    return !after.exists || after.squared > before.squared ? before.onRay : after.onRay;
}

const Triangle* MeshScreen::findClosestTriangle(const Point<double, 3>& point, bool nearestCentroid) const {
    const quarn::detail::ContainingTriangleSearch& search = index->containingTriangle;
    if (nearestCentroid) return search.findNearest(point);

    if (!boundaryValid) return search.findContaining(point);
    // Intended: the first visited triangle that does not contain the point decides whether the
    // point is on the screen at all, with the UV of its first corner if the projection is outside
    // of it. A reader would expect the containing triangle to decide.
    const auto [containing, rejected] = search.find(point);
    return !rejected || isWithinOutline(*rejected) ? containing : nullptr;
}

bool MeshScreen::isWithinOutline(const Point<double, 2>& uv) const {
    return index->bounds.contains(uv) && index->boundaryUV.contains(uv);
}

Point<double, 3> MeshScreen::getScreenNormal(const Point<double, 3>& point) const {
    const Triangle* const triangle = findClosestTriangle(point, false);
    return triangle == nullptr ? Point<double, 3>() : triangle->normal;
}

bool MeshScreen::isOnScreenSection(const Point<double, 3>& point) const {
    return getScreenNormal(point) != Point<double, 3>();
}

Point<double, 3> MeshScreen::getClosestPoint(const Point<double, 3>& point) const {
    const Triangle* const triangle = findClosestTriangle(point, true);
    if (triangle == nullptr) return {};
    double t = 0.0;
    double a = 0.0;
    double b = 0.0;
    Point<double, 3> hit;
    if (!intersectTrianglePlane(point, point + triangle->normal, *triangle, t, hit, a, b, false)) return {};
    return triangle->pointAt(std::clamp(a, 0.0, 1.0), std::clamp(b, 0.0, 1.0));
}

Point<double, 3> MeshScreen::getPointOnMeshEdge(const Point<double, 3>& point) const {
    const int levels = std::min(index->uvTree.depth(), kMaxCreaseLevels);
    if (triangles.size() < static_cast<std::size_t>(levels) * kTrianglesPerCreaseLevel) return point;
    const auto nearest = index->containingTriangle.tree().findKNearest(point, 2 * levels);
    const Point<double, 3> candidate =
        quarn::detail::closestOn(quarn::detail::sharpestCrease(nearest), point);
    return length(point - candidate) < kSnapDistance ? candidate : point;
}
