#include "Reference/Shapes/ReferenceCylinder.h"

#include <algorithm>
#include <cmath>

namespace quarn::test {

Point3 ReferenceCylinder::normalAt(const Point3& p) const {
    const double nx = cx - p[0];
    const double ny = cy - p[1];
    const double len = std::sqrt(nx * nx + ny * ny);
    if (1e-06 > len) return {0.0, 0.0, 0.0};
    return {nx / len, ny / len, 0.0 / len};
}

bool ReferenceCylinder::isOnSection(const Point3& p) const {
    const double e = 1e-06;
    const double dz = p[2] - cz;
    if (dz > height * 0.5 + e) return false;
    if (height * (-0.5) - e > dz) return false;
    const double dx = p[0] - cx;
    const double dy = p[1] - cy;
    if (std::fabs(dy * dy + dx * dx - radius * radius) > e) return false;
    double theta = std::atan2(dx / radius, dy / radius);
    double low = maxTheta < minTheta ? maxTheta : minTheta;
    double high = minTheta < maxTheta ? maxTheta : minTheta;
    low -= e;
    high += e;
    while (low > theta) theta += 6.283185307179586;
    while (theta > high) theta -= 6.283185307179586;
    return theta >= low && high >= theta;
}

Point2 ReferenceCylinder::uvOf(const Point3& p) const {
    const double v = (height * 0.5 - (p[2] - cz)) / height;
    const double theta = std::atan2((p[0] - cx) / radius, (p[1] - cy) / radius);
    if (theta < 0.0) {
        const double high = minTheta < maxTheta ? maxTheta : minTheta;
        if (high >= theta + 6.283185307179586)
            return {(theta + 6.283185307179586 - minTheta) / (maxTheta - minTheta), v};
    }
    return {(theta - minTheta) / (maxTheta - minTheta), v};
}

Point3 ReferenceCylinder::positionAt(double u, double v) const {
    const double theta = (1.0 - u) * minTheta + u * maxTheta;
    const double x = std::sin(theta) * radius + cx;
    const double y = std::cos(theta) * radius + cy;
    const double z = (1.0 - v) * (height * 0.5) - (height * 0.5) * v + cz;
    return {x, y, z};
}

std::vector<Intersection> ReferenceCylinder::wallHits(const Point3& from, const Point3& to) const {
    const double ox = from[0] - cx;
    const double oy = from[1] - cy;
    const double dx = to[0] - ox;
    const double dy = to[1] - oy;
    const double a = dy * dy + dx * dx;
    const double b = 2.0 * (dy * oy + dx * ox);
    const double c = oy * oy + ox * ox - radius * radius;
    std::vector<double> candidates;
    const double disc = b * b - c * (4.0 * a);
    if (a == 0.0 || disc < 0.0) return {};
    if (disc == 0.0) {
        candidates = {b / (-2.0 * a)};
    } else {
        const double s = std::sqrt(disc);
        candidates = {(-b - s) / (2.0 * a), (s - b) / (2.0 * a)};
    }

    std::vector<Intersection> found;
    for (const double t : candidates) {
        if (!(t > 0.0)) continue;
        const double ux = to[0] - from[0];
        const double uy = to[1] - from[1];
        const double uz = to[2] - from[2];
        Intersection hit;
        hit.point = Point3(from[0] + t * ux, from[1] + t * uy, from[2] + t * uz);
        const Point3 n = normalAt(hit.point);
        hit.normalSign = signOfNumber(0.0 + ux * n[0] + uy * n[1] + uz * n[2]);
        found.push_back(hit);
    }
    return found;
}

Samples ReferenceCylinder::samples(const GridRow& row) const {
    Samples result;
    if (row.count < 2) return result;
    const double arc = maxTheta - minTheta;
    const double zOffset = height * 0.5 - height * row.v;
    const double stepU = (row.uEnd - row.uStart) / (row.count - 1);
    const double theta0 = arc * row.uStart + minTheta;
    const double stepTheta = (arc * row.uEnd + minTheta - theta0) / (row.count - 1);
    for (int i = 0; i < row.count; ++i) {
        const double u = i * stepU + row.uStart;
        const bool isInside = u >= 0.0 && u <= 1.0 && row.v >= 0.0 && row.v <= 1.0;
        if (!row.extrapolate && !isInside) continue;
        const double theta = i * stepTheta + theta0;
        result.insert({Point<int, 2>(i, row.row),
                       Point3(std::sin(theta) * radius + cx, std::cos(theta) * radius + cy, zOffset + cz)});
    }
    return result;
}

std::vector<Point3> ReferenceCylinder::calibrationPoints(int columns, int rows) const {
    std::vector<Point3> points;
    for (int i = 0; i < columns; ++i) {
        for (int j = 0; j < rows; ++j) {
            const double stepTheta = (maxTheta - minTheta) / (columns - 1);
            const double stepZ = height / (rows - 1);
            const double theta = i * stepTheta + minTheta;
            points.emplace_back(radius * std::sin(theta), radius * std::cos(theta), height * 0.5 - j * stepZ);
        }
    }
    return points;
}

int ReferenceCylinder::outlineCount() const {
    const double count = std::fabs((maxTheta - minTheta) * 57.2957795131 * 0.5);
    return isCount(count) ? static_cast<int>(count) : 0;
}

Outline ReferenceCylinder::outline() const {
    Outline edges(4);
    const int n = outlineCount();
    const bool fullCircle = std::fabs(maxTheta - minTheta) >= 6.283185307179586;
    for (int i = 0; i <= n - 1; ++i) edges[0].push_back(positionAt(static_cast<double>(i) / n, 0.0));
    for (int i = n; i >= 1; --i) edges[2].push_back(positionAt(static_cast<double>(i) / n, 1.0));
    for (int j = 0; j < 20 && !fullCircle; ++j) {
        edges[1].push_back(positionAt(1.0, j / 20.0));
        edges[3].push_back(positionAt(0.0, (20 - j) / 20.0));
    }
    return edges;
}

DisplayGeometry ReferenceCylinder::displayGeometry() const {
    DisplayGeometry display;
    const double half = height * 0.5;
    const double m = radius < half ? half : radius;
    display.viewPoint = Point3(0.0, viewFactor(m) * m, 0.0);
    display.indices = gridIndices();
    for (int vertex = 0; vertex < 10000; ++vertex) {
        const double r = std::floor(vertex / 100.0);
        const double c = vertex % 100;
        const double z = height * 0.5 - (r * height) / 99.0;
        const double theta = ((maxTheta - minTheta) * c) / 99.0 + minTheta;
        display.vertices.emplace_back(std::sin(theta) * radius, std::cos(theta) * radius, z);
        display.normals.emplace_back(-std::sin(theta), -std::cos(theta), 0.0);
    }
    return display;
}

Point3 ReferenceCylinder::heading() const {
    const double theta = (maxTheta + minTheta) * 0.5;
    return {std::sin(theta), std::cos(theta), 0.0};
}

double ReferenceCylinder::maxAngle() const {
    const Point3 h = heading();
    const double headingLength = std::sqrt(h[0] * h[0] + h[1] * h[1] + h[2] * h[2]);
    const double a = std::max(std::fabs(minTheta), std::fabs(maxTheta));
    const double e = std::atan2(height * 0.5, radius);
    const double x = std::sin(a) * std::cos(e);
    const double y = std::cos(a) * std::cos(e);
    const double z = std::sin(e);
    const double cornerLength = std::sqrt(x * x + y * y + z * z);
    return std::acos((x / cornerLength) * (h[0] / headingLength) +
                     (y / cornerLength) * (h[1] / headingLength) +
                     (z / cornerLength) * (h[2] / headingLength));
}

bool ReferenceCylinder::endsSectionTest() const {
    constexpr double kFarthest = 10000.0;  // radians
    const double low = maxTheta < minTheta ? maxTheta : minTheta;
    const double high = minTheta < maxTheta ? maxTheta : minTheta;
    return !(low > kFarthest) && !(high < -kFarthest);
}

}  // namespace quarn::test
