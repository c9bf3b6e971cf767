#include "Reference/Shapes/ReferenceContract.h"

namespace quarn::test {

namespace {

double squareOfDistance(const Point3& a, const Point3& b) {
    const double x = a[0] - b[0];
    const double y = a[1] - b[1];
    const double z = a[2] - b[2];
    return x * x + y * y + z * z;
}

bool isDefault(const Intersection& hit) {
    return hit.point[0] == 0.0 && hit.point[1] == 0.0 && hit.point[2] == 0.0 && !hit.hasUV &&
           hit.uv[0] == 0.0 && hit.uv[1] == 0.0 && hit.triangleIndex == -1 && hit.normalSign == 0;
}

}  // namespace

std::vector<Point2> gridPath(int density) {
    std::vector<Point2> path;
    const int n = density % 2 == 0 ? density + 1 : density;
    const double k = static_cast<double>(n) - 1.0;
    for (int i = 0; i < n; ++i) {
        const bool upwards = i % 2 == 1;
        double u = i / k;
        for (int j = 0; j < 21; ++j) path.emplace_back(u, upwards ? 1.0 - j * 0.05 : j * 0.05);
        for (int j = 0; j < 3 && i + 1 < n; ++j) path.emplace_back(u += 0.25 / k, upwards ? 0.0 : 1.0);
    }
    for (int i = 0; i < n; ++i) {
        const bool rightwards = i % 2 == 1;
        double v = 1.0 - i / k;
        for (int j = 0; j < 21; ++j) path.emplace_back(rightwards ? j * 0.05 : 1.0 - j * 0.05, v);
        for (int j = 0; j < 3 && i + 1 < n; ++j) path.emplace_back(rightwards ? 1.0 : 0.0, v -= 0.25 / k);
    }
    return path;
}

std::vector<std::vector<Point2>> boundaryPath() {
    std::vector<std::vector<Point2>> edges(4);
    for (int i = 0; i < 20; ++i) {
        const double ascending = static_cast<double>(i) / 20.0;
        const double descending = static_cast<double>(20 - i) / 20.0;
        edges[0].emplace_back(0.0, ascending);
        edges[1].emplace_back(ascending, 1.0);
        edges[2].emplace_back(1.0, descending);
        edges[3].emplace_back(descending, 0.0);
    }
    return edges;
}

std::optional<Intersection> closestHit(const ClosestQuery& query) {
    Intersection best;
    double nearest = 1.7976931348623157e+308;
    std::vector<Intersection> all = query.forward;
    all.insert(all.end(), query.backward.begin(), query.backward.end());
    for (const Intersection& hit : all) {
        const double d = squareOfDistance(query.from, hit.point);
        if (d < nearest) {
            nearest = d;
            best = hit;
        }
    }
    if (isDefault(best)) return std::nullopt;
    const double hitSquared = squareOfDistance(best.point, query.from);
    const double closestSquared = squareOfDistance(query.closestPoint, query.from);
    const bool isNearEnough = hitSquared < closestSquared * 3.0 + 0.000001;
    if (!isNearEnough) return std::nullopt;
    if (!best.hasUV) best.uv = query.mappedUV;
    best.hasUV = true;
    return best;
}

}  // namespace quarn::test
