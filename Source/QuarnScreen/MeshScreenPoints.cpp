// Positions: which triangle lies there, and what it answers.
#include <QuarnScreen/MeshScreen.h>

#include <algorithm>
#include <optional>

#include <QuarnScreen/Detail/Mesh/MeshIndexes.h>

const Triangle* MeshScreen::findClosestTriangle(const Point<double, 3>& point, bool nearestCentroid) const {
    const quarn::detail::CentroidSearch& search = index->centroidSearch;
    if (nearestCentroid) return search.tree().findNearest(point);

    const Triangle* const containing = search.findContaining(point);
    if (containing == nullptr || !boundaryValid) return containing;
    // Intended: the first triangle that is met and does not hold the point decides whether the point counts as on the
    // screen at all, with the UV of its first corner where the point's foot lies outside of it.
    const std::optional<Point<double, 2>> rejected = search.firstRejectedUV(point);
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
