#include "Reference/Shapes/ReferenceCurved.h"

#include "Reference/Shapes/ReferenceContract.h"

namespace quarn::test {

IntersectionSet ReferenceCurved::hits(const Point3& from, const Point3& to) const {
    const std::vector<Intersection> found = wallHits(from, to);
    IntersectionSet kept;
    if (!found.empty() && isOnSection(found.front().point)) kept.add(found.front());
    if (found.size() > 1 && isOnSection(found.back().point)) kept.add(found.back());
    return kept;
}

IntersectionSet ReferenceCurved::hitsOfSide(const Point3& from, const Point3& to, int sign) const {
    const auto sideOf = [&](const Intersection& hit) {
        const Point3 n = normalAt(hit.point);
        double s = 0.0;
        s += (to[0] - from[0]) * n[0];
        s += (to[1] - from[1]) * n[1];
        s += (to[2] - from[2]) * n[2];
        return signOfNumber(s);
    };
    const std::vector<Intersection> found = wallHits(from, to);
    IntersectionSet kept;
    if (!found.empty() && sideOf(found.front()) == sign) kept.add(found.front());
    if (found.size() > 1 && sideOf(found.back()) == sign) kept.add(found.back());
    return kept;
}

Point3 ReferenceCurved::closestPoint(const Point3& p) const {
    const Point2 uv = uvOf(p);
    double u = uv[0];
    double v = uv[1];
    if (u < 0.0) u = 0.0;
    if (u > 1.0) u = 1.0;
    if (v < 0.0) v = 0.0;
    if (v > 1.0) v = 1.0;
    return positionAt(u, v);
}

std::optional<Intersection> ReferenceCurved::closestIntersection(const Point3& from, const Point3& direction,
                                                                 bool extrapolate) const {
    const auto hitsTowards = [&](double sign) {
        const Point3 to(from[0] + sign * direction[0], from[1] + sign * direction[1],
                        from[2] + sign * direction[2]);
        const IntersectionSet found = extrapolate ? hitsOfSide(from, to, 0) : hits(from, to);
        return std::vector<Intersection>(found.begin(), found.end());
    };
    auto found = closestHit({from, hitsTowards(1.0), hitsTowards(-1.0), closestPoint(from), {}});
    if (found) found->uv = uvOf(found->point);
    return found;
}

int signOfNumber(double number) {
    if (number > 0.0) return 1;
    if (number < 0.0) return -1;
    return 0;
}

double viewFactor(double size) {
    if (1.0 > size) return -1.0;
    if (5.0 > size) return -5.0;
    return -10.0;
}

std::vector<int> gridIndices() {
    std::vector<int> indices;
    for (int r = 1; r <= 99; ++r) {
        for (int c = 0; c <= 98; ++c) {
            const int a = (r - 1) * 100 + c;
            const int b = r * 100 + c;
            indices.push_back(a);
            indices.push_back(b);
            indices.push_back(b + 1);
            indices.push_back(a);
            indices.push_back(b + 1);
            indices.push_back(a + 1);
        }
    }
    return indices;
}

bool isCount(double count) {
    return count > -2147483649.0 && count < 2147483648.0;
}

}  // namespace quarn::test
