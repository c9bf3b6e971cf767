#include "Reference/Mesh/ReferenceMapping.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "Support/Conversions.h"

namespace quarn::test {
namespace {

using State = ReferenceMappingCache::State;

struct Parameters {
    double a;
    double b;
};

Parameters parametersAt(const Triangle& triangle, const Point2& uv) {
    const double du = uv[0] - triangle.vertices[0].uv[0];
    const double dv = uv[1] - triangle.vertices[0].uv[1];
    const double a = (du * triangle.uvEdge2[1] - dv * triangle.uvEdge2[0]) / triangle.uvDeterminant;
    const double b = (dv * triangle.uvEdge1[0] - du * triangle.uvEdge1[1]) / triangle.uvDeterminant;
    return {a, b};
}

Point3 meanOf(const std::vector<Point3>& points) {
    std::array<double, 3> sum{};
    for (const Point3& point : points)
        for (std::size_t i = 0; i < 3; ++i) sum[i] += point[i];
    const double share = 1.0 / static_cast<double>(points.size());
    return {sum[0] * share, sum[1] * share, sum[2] * share};
}

double squaredDistance(const Point3& a, const Point3& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    return sum;
}

std::string numberText(double number) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, 6);
    return {text.data(), end.ptr};
}

}  // namespace

std::string referenceText(const Point2& uv) {
    return "(" + numberText(uv[0]) + "," + numberText(uv[1]) + ")";
}

std::string referenceText(const Point3& point) {
    return "(" + numberText(point[0]) + "," + numberText(point[1]) + "," + numberText(point[2]) + ")";
}

std::optional<ReferenceMappingCache::Entry> ReferenceMappingCache::check(const Point2& uv) {
    const int n = static_cast<int>(entries.size());
    const int c = cursor;
    const auto isMatch = [&](int i) {
        const Point2& key = entries[static_cast<std::size_t>(i)].uv;
        return key[0] == uv[0] && key[1] == uv[1];
    };
    for (int i = c; i < n; ++i)
        if (isMatch(i)) {
            cursor = i;
            return entries[static_cast<std::size_t>(i)];
        }
    for (int i = 0; i < c; ++i)
        if (isMatch(i)) {
            cursor = i;
            return entries[static_cast<std::size_t>(i)];
        }
    return {};
}

void ReferenceMappingCache::add(const Point2& uv, const Point3& point, State state) {
    const int size = static_cast<int>(entries.size());
    if (size < capacity) {
        entries.push_back({uv, point, state});
        cursor = size;
    } else {
        cursor = (cursor + 1) % size;
        entries[static_cast<std::size_t>(cursor)] = {uv, point, state};
    }
}

Point3 referencePositionAt(const Triangle& triangle, const Point2& uv) {
    const Parameters at = parametersAt(triangle, uv);
    Point3 position;
    for (std::size_t i = 0; i < 3; ++i)
        position[i] =
            (triangle.vertices[0].position[i] + at.a * triangle.edge1[i]) + at.b * triangle.edge2[i];
    return position;
}

Point3 referenceFilterOutliers(int keep, std::vector<Point3>& points) {
    const int n = static_cast<int>(points.size());
    Point3 mean = meanOf(points);
    const int limit = std::min(keep, n);
    if (n <= limit) return mean;
    while (static_cast<int>(points.size()) > limit) {
        std::stable_sort(points.begin(), points.end(), [&](const Point3& a, const Point3& b) {
            return squaredDistance(a, mean) < squaredDistance(b, mean);
        });
        points.pop_back();
        mean = meanOf(points);
    }
    return mean;
}

Point3 referenceExtrapolateUV(const ReferenceUVTree& tree, const Point2& uv) {
    const int keep = std::min(tree.depth, 15);
    const int candidates = keep * 2;
    ReferenceNearestWalk<const Triangle*, 2, ReferenceUVCentroidKey> walk(tree, uv);
    std::vector<Point3> points;
    points.reserve(static_cast<std::size_t>(candidates));
    int steps = 0;
    while (!walk.done() && steps < candidates) {
        const Triangle& triangle = *walk.value();
        if (!(triangle.uvDeterminant == 0.0)) points.push_back(referencePositionAt(triangle, uv));
        ++steps;
        walk.advance();
    }
    return referenceFilterOutliers(keep, points);
}

Point2 referenceMapInto2D(const ReferenceMesh& mesh, const Point3& at, bool extrapolate) {
    const Triangle* const triangle =
        extrapolate ? mesh.findNearestCentroid(at) : mesh.searchHolding(at).triangle;
    if (triangle == nullptr) return {-999.0, -999.0};
    double t = 0.0;
    double a = 0.0;
    double b = 0.0;
    reference::Vec3 hit{};
    if (!reference::intersectPlane(plain(at), plain(at + triangle->normal), plain(*triangle), t, hit, a, b,
                                   extrapolate))
        return {-999.0, -999.0};
    Point2 uv;
    for (std::size_t i = 0; i < 2; ++i)
        uv[i] = (triangle->vertices[0].uv[i] + a * triangle->uvEdge1[i]) + b * triangle->uvEdge2[i];
    return uv;
}

template <class Text>
void ReferenceMapping::write(const char* level, Text text) const {
    if (log != nullptr) log->emplace_back(level, text());
}

void ReferenceMapping::rebuild(const std::vector<Triangle>& mesh) {
    uvTree.build(pointersTo(mesh));
    regionMap.rebuild(mesh);
}

std::optional<const Triangle*> ReferenceMapping::ask(const Point2& uv) const {
    std::optional<const Triangle*> found;
    if (regionMap.nodes.empty()) return found;
    const RegionRect& rect = regionMap.rootRect;
    if (rect.minU > uv[0] || uv[0] > rect.maxU || rect.minV > uv[1] || uv[1] > rect.maxV) return found;
    regionMap.locate(static_cast<int>(regionMap.nodes.size()) - 1, rect, uv[0], uv[1], found);
    return found;
}

bool ReferenceMapping::answerHit(const ReferenceMappingCache::Entry& entry, const Point2& uv, Point3& result,
                                 bool extrapolate) {
    const std::string found = log == nullptr ? "" : "good job cache! found " + referenceText(uv);
    result = entry.point;
    if (entry.state == State::OnScreen) {
        lastWay = Way::HitOnScreen;
        write("TRACE", [&] { return found + " which maps to on screen" + referenceText(result); });
        return true;
    }
    if (entry.state == State::Extrapolated) {
        lastWay = Way::HitExtrapolated;
        write("TRACE", [&] { return found + " which maps to extrapolated" + referenceText(result); });
        return extrapolate;
    }
    lastWay = Way::HitOutOfBounds;
    write("TRACE", [&] { return found + "but non extrapolated out of bounds"; });
    if (!extrapolate) return false;
    result = referenceExtrapolateUV(uvTree, uv);
    write("TRACE", [&] { return "extrapolated out of bounds point: " + referenceText(uv); });
    cache.add(uv, result, State::Extrapolated);
    return true;
}

bool ReferenceMapping::mapInto3D(const Point2& uv, Point3& result, bool extrapolate) {
    lastWay = Way::Refused;
    if (!parameterized) return false;

    if (const auto entry = cache.check(uv)) {
        return answerHit(*entry, uv, result, extrapolate);
    }
    write("TRACE", [&] { return ":-( not in cache (yet)  " + referenceText(uv); });

    // The quadtree tests the triangle's own fields, so that the triangle cannot disagree.
    if (const auto found = ask(uv)) {
        result = referencePositionAt(**found, uv);
        cache.add(uv, result, State::OnScreen);
        lastWay = Way::OnMesh;
        return true;
    }

    write("TRACE", [&] { return "out of bounds: " + referenceText(uv); });
    lastWay = extrapolate ? Way::Continued : Way::OutOfBounds;
    if (!extrapolate) {
        cache.add(uv, result, State::OutOfBounds);
        write("TRACE", [&] {
            return "extrapolate is false; failed to find triangle for point: " + referenceText(uv);
        });
        return false;
    }
    result = referenceExtrapolateUV(uvTree, uv);
    write("TRACE", [&] { return "found via extrapolate: " + referenceText(uv); });
    cache.add(uv, result, State::Extrapolated);
    return true;
}

}  // namespace quarn::test
