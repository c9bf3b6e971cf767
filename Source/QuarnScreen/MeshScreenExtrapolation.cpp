// Answers beyond the mesh.
#include <QuarnScreen/MeshScreen.h>

#include <algorithm>
#include <cmath>

#include <QuarnScreen/Detail/Mesh/MeshIndexes.h>
#include <QuarnScreen/Detail/Mesh/OutlierFilter.h>
#include <QuarnScreen/Detail/Platform/Sign.h>
#include <QuarnScreen/Detail/Search/UVParameters.h>
#include <QuarnScreen/Lines.h>

namespace {

// Most triangles whose continuations are averaged; twice as many are asked.
constexpr int kMaxAveraged = 15;

// The position of the ray nearest to a single position, not behind the ray's origin.
Point<double, 3> projectionOnRay(const Ray& ray, const Point<double, 3>& point) {
    const Point<double, 3> direction = ray.target - ray.origin;
    const double squared = dot(direction, direction);
    if (squared == 0.0) return ray.origin;
    const double t = dot(point - ray.origin, direction) / squared;
    return t > 0.0 ? ray.origin + t * direction : ray.origin;
}

// Asks the processor for what pointAt() and the parameters of a UV read of a triangle.
void prefetch(const Triangle& triangle) {
    __builtin_prefetch(&triangle.vertices[0].position);
    __builtin_prefetch(&triangle.vertices[0].uv);
    __builtin_prefetch(&triangle.edge1);
    __builtin_prefetch(&triangle.uvDeterminant);
}

// Where a ray comes nearest to a segment.
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

Point<double, 3> MeshScreen::extrapolateUV(const Point<double, 2>& uv) const {
    const int keep = std::min(index->uvTree.depth(), kMaxAveraged);
    const int candidates = 2 * keep;
    std::vector<const Triangle*> nearest;
    nearest.reserve(static_cast<std::size_t>(candidates));
    quarn::detail::UVTree::NearestIterator walk(index->uvTree, uv);
    // The steps are counted, as the walk need not end by itself where distances are NaN. Triangles lie far apart in
    // memory, so each is asked for while the walk goes on.
    for (int step = 0; step < candidates && !walk.done(); ++step, walk.advance()) {
        nearest.push_back(walk.value());
        prefetch(*walk.value());
    }
    std::vector<Point<double, 3>> points;
    points.reserve(nearest.size());
    for (const Triangle* const candidate : nearest) {
        const Triangle& triangle = *candidate;
        if (triangle.uvDeterminant == 0.0) continue;
        const quarn::detail::UVParameters parameters = quarn::detail::parametersOf(triangle, uv);
        points.push_back(triangle.pointAt(parameters.a, parameters.b));
    }
    return quarn::detail::filterOutliersAndAverage(keep, points);
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

// The outline's point in the direction most like the ray's, seen from the ray's target. Intended: a point straight
// behind scores like one straight ahead.
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
    // Intended: the last point has no successor, where a reader would expect the outline to go round.
    const NearestOnRay after =
        i + 1 < points.size() ? nearestOnRay(ray, points[i], points[i + 1]) : NearestOnRay{false, {}, 0.0};
    if (!before.exists) return after.exists ? after.onRay : points[i];
    return !after.exists || after.squared > before.squared ? before.onRay : after.onRay;
}
