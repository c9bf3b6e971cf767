// Mapping between positions and UVs.
#include <QuarnScreen/MeshScreen.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <QuarnScreen/Detail/Mesh/MappingCache.h>
#include <QuarnScreen/Detail/Mesh/MeshIndexes.h>
#include <QuarnScreen/Detail/Mesh/OutlierFilter.h>
#include <QuarnScreen/Detail/Platform/LogText.h>
#include <QuarnScreen/Detail/Search/TriangleContainment.h>

using quarn::detail::logText;

namespace {

// Maximum number of triangles whose extrapolations are averaged. Twice as many are candidates.
constexpr int kMaxAveraged = 15;

bool isWithin(const RegionRect& rect, const Point<double, 2>& uv) {
    return !(rect.minU > uv[0]) && !(uv[0] > rect.maxU) && !(rect.minV > uv[1]) && !(uv[1] > rect.maxV);
}

std::string triangleText(const Triangle& triangle) {
    const auto& [v0, v1, v2] = triangle.vertices;
    return logText(triangle.uvCentroid) + " - <" + logText(v0.uv) + ", " + logText(v1.uv) + ", " +
           logText(v2.uv) + ">";
}

// Prefetches the fields that pointAt() and parametersOf() read.
void prefetch(const Triangle& triangle) {
    __builtin_prefetch(&triangle.vertices[0].position);
    __builtin_prefetch(&triangle.vertices[0].uv);
    __builtin_prefetch(&triangle.edge1);
    __builtin_prefetch(&triangle.uvDeterminant);
}

}  // namespace

Point<double, 2> MeshScreen::mapInto2D(const Point<double, 3>& point, bool extrapolate) const {
    if (!hasParameterization()) return kNoUV;
    const Triangle* const triangle = findClosestTriangle(point, extrapolate);
    if (triangle == nullptr) return kNoUV;
    double t = 0.0;
    double a = 0.0;
    double b = 0.0;
    Point<double, 3> hit;
    if (!intersectTrianglePlane(point, point + triangle->normal, *triangle, t, hit, a, b, extrapolate))
        return kNoUV;
    return triangle->uvAt(a, b);
}

bool MeshScreen::mapInto3D(const Point<double, 2>& uv, Point<double, 3>& result, bool extrapolate) const {
    if (!hasParameterization()) return false;
    if (const std::optional<MappingInto3D> known = mappingCache->find(uv))
        return answerFromCache(*known, uv, result, extrapolate);
    LOG4CXX_TRACE(log, ":-( not in cache (yet)  " << logText(uv));

    if (const Triangle* const triangle = findTriangleAtUV(uv)) {
        const quarn::detail::UVParameters parameters = quarn::detail::parametersOf(*triangle, uv);
        result = triangle->pointAt(parameters.a, parameters.b);
        mappingCache->add({uv, result, MappingInto3D::OnScreen});
        return true;
    }
    LOG4CXX_TRACE(log, "out of bounds: " << logText(uv));
    if (!extrapolate) {
        // Intended: the entry contains the position that the caller passed; a reader would expect
        // none.
        mappingCache->add({uv, result, MappingInto3D::OutOfBounds});
        LOG4CXX_TRACE(log, "extrapolate is false; failed to find triangle for point: " << logText(uv));
        return false;
    }
    result = extrapolateUV(uv);
    LOG4CXX_TRACE(log, "found via extrapolate: " << logText(uv));
    mappingCache->add({uv, result, MappingInto3D::Extrapolated});
    return true;
}

// Intended: the position is written regardless of the result; a reader would expect it with true
// only.
bool MeshScreen::answerFromCache(const MappingInto3D& known, const Point<double, 2>& uv,
                                 Point<double, 3>& result, bool extrapolate) const {
    result = known.point;
    if (known.state == MappingInto3D::OnScreen) {
        LOG4CXX_TRACE(
            log, "good job cache! found " << logText(uv) << " which maps to on screen" << logText(result));
        return true;
    }
    if (known.state == MappingInto3D::Extrapolated) {
        LOG4CXX_TRACE(
            log, "good job cache! found " << logText(uv) << " which maps to extrapolated" << logText(result));
        return extrapolate;
    }
    LOG4CXX_TRACE(log, "good job cache! found " << logText(uv) << "but non extrapolated out of bounds");
    if (!extrapolate) return false;
    result = extrapolateUV(uv);
    LOG4CXX_TRACE(log, "extrapolated out of bounds point: " << logText(uv));
    mappingCache->add({uv, result, MappingInto3D::Extrapolated});
    return true;
}

// Finds the triangle that contains a UV by the quadtree, then checks the triangle's own fields,
// which may have changed since the build.
const Triangle* MeshScreen::findTriangleAtUV(const Point<double, 2>& uv) const {
    const RegionMap& map = index->regionMap;
    if (map.nodes().empty() || !isWithin(map.rootRect(), uv)) return nullptr;
    std::optional<const Triangle*> found;
    map.locate(static_cast<int>(map.nodes().size()) - 1, map.rootRect(), uv[0], uv[1], found);
    if (!found) return nullptr;
    const Triangle& triangle = **found;
    if (triangle.uvDeterminant != 0.0 && quarn::detail::parametersOf(triangle, uv).isInside())
        return &triangle;
    LOG4CXX_WARN(log, "RegionMap thought the point was in this triangle, but the triangle disagrees: "
                          << logText(uv) << triangleText(triangle));
    return nullptr;
}

Point<double, 3> MeshScreen::extrapolateUV(const Point<double, 2>& uv) const {
    const int keep = std::min(index->uvTree.depth(), kMaxAveraged);
    const int candidates = 2 * keep;
    std::vector<const Triangle*> nearest;
    nearest.reserve(static_cast<std::size_t>(candidates));
    quarn::detail::UVTree::NearestIterator walk(index->uvTree, uv);
    // Count the steps, because the iterator may not terminate for NaN distances. Triangles are far
    // apart in memory, so prefetch each one while the iteration continues.
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
