#include "Reference/Mesh/ReferenceRays.h"

#include <cmath>

#include "Support/Conversions.h"

namespace quarn::test {
namespace {

using reference::Vec3;

Vec3 difference(const Vec3& a, const Vec3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

int referenceSign(double number) {
    if (number > 0.0) return 1;
    if (number < 0.0) return -1;
    return 0;
}

// The place where a segment and a ray come nearest to each other.
struct Approach {
    bool exists = false;
    Vec3 onSegment{};
    Vec3 onRay{};

    [[nodiscard]] double squaredGap() const {
        const Vec3 gap = difference(onSegment, onRay);
        return reference::dot(gap, gap);
    }
};

Approach approachOf(const Point3& a, const Point3& b, const Ray& ray) {
    Approach approach;
    approach.exists = reference::closestPoints(plain(a), plain(b), plain(ray.origin), plain(ray.target),
                                               approach.onSegment, approach.onRay, {true, true, true, false});
    return approach;
}

Point3 footOf(const Point3& b, const Ray& ray) {
    const Vec3 d = difference(plain(ray.target), plain(ray.origin));
    const double dd = reference::dot(d, d);
    if (dd == 0.0) return ray.origin;
    const double t = reference::dot(difference(plain(b), plain(ray.origin)), d) / dd;
    if (!(t > 0.0)) return ray.origin;
    return {ray.origin[0] + t * d[0], ray.origin[1] + t * d[1], ray.origin[2] + t * d[2]};
}

}  // namespace

int referenceBoundaryPoint(const Boundary& outline, const Ray& ray, int normalSign) {
    const Vec3 direction = reference::normalized(difference(plain(ray.target), plain(ray.origin)));
    int result = -1;
    double bestAlignment = -1.0;
    for (std::size_t i = 0; i < outline.points.size(); ++i) {
        const Vec3 w = difference(plain(outline.points[i]), plain(ray.target));
        const double len = reference::length(w);
        double sum = 0.0;
        for (std::size_t axis = 0; axis < 3; ++axis) sum += (w[axis] / len) * direction[axis];
        const double alignment = std::fabs(sum);
        if (!(alignment > bestAlignment)) continue;
        if (normalSign != 0) {
            const Triangle* const triangle = outline.triangles[i];
            if (triangle == nullptr) continue;
            if (referenceSign(reference::dot(plain(triangle->normal), direction)) != normalSign) continue;
        }
        bestAlignment = alignment;
        result = static_cast<int>(i);
    }
    return result;
}

ReferenceNearest referenceNearestToBoundary(const Boundary& outline, const Ray& ray, int normalSign) {
    using Way = ReferenceNearest::Way;
    const int i = referenceBoundaryPoint(outline, ray, normalSign);
    if (i == -1) return {{}, Way::NoPoint, i};
    const auto at = [&](int k) { return outline.points.at(static_cast<std::size_t>(k)); };
    const int n = static_cast<int>(outline.points.size());
    const Point3 b = at(i);
    if (n == 1) return {footOf(b, ray), Way::SinglePoint, i};

    const Approach first = approachOf(at(i == 0 ? n - 1 : i - 1), b, ray);
    Approach second;
    if (i + 1 < n) second = approachOf(b, at(i + 1), ray);
    if (!first.exists && !second.exists) return {b, Way::NeitherSegment, i};
    if (!second.exists) return {point(first.onRay), Way::OnlyFirst, i};
    if (!first.exists) return {point(second.onRay), Way::OnlySecond, i};
    if (second.squaredGap() > first.squaredGap()) return {point(first.onRay), Way::First, i};
    return {point(second.onRay), Way::Second, i};
}

IntersectionSet referencePastTheEdge(const std::vector<Triangle>& triangles, const IntersectionSet& hits,
                                     const Boundary& outline, const Ray& ray, int normalSign) {
    const Vec3 d = difference(plain(ray.target), plain(ray.origin));
    IntersectionSet kept;
    for (int i = 0; i < hits.count(); ++i) {
        const Triangle& triangle = triangles.at(static_cast<std::size_t>(hits.get(i).triangleIndex));
        const int sign = referenceSign(reference::dot(d, plain(triangle.normal)));
        if (normalSign == 0 || sign == normalSign) kept.add(hits.get(i));
    }
    if (!kept.empty()) return kept;
    Intersection fallback;
    fallback.point = referenceNearestToBoundary(outline, ray, normalSign).position;
    return IntersectionSet(fallback);
}

}  // namespace quarn::test
