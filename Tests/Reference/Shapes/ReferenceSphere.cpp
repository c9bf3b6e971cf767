#include "Reference/Shapes/ReferenceSphere.h"

#include <algorithm>
#include <cmath>

namespace quarn::test {

Point3 ReferenceSphere::normalAt(const Point3& p) const {
    const double nx = cx - p[0];
    const double ny = cy - p[1];
    const double nz = cz - p[2];
    const double len = std::sqrt(nx * nx + ny * ny + nz * nz);
    if (1e-06 > len) return {0.0, 0.0, 0.0};
    return {nx / len, ny / len, nz / len};
}

bool ReferenceSphere::isOnSection(const Point3& p) const {
    const double e = 1e-06;
    const double qx = (p[0] - cx) / radius;
    const double qy = (p[1] - cy) / radius;
    const double qz = (p[2] - cz) / radius;
    if (std::fabs(qx * qx + qy * qy + qz * qz - 1.0) > e) return false;
    const double phi = std::asin(qz);
    if (minPhi - e > phi) return false;
    if (phi > maxPhi + e) return false;
    const double c = std::cos(phi);
    const double theta = std::atan2(qx / c, qy / c);
    const double low = minTheta - e;
    const double high = maxTheta + e;
    if (theta < 0.0) {
        const double w = theta + 6.283185307179586;
        return high >= w ? w >= low : theta >= low;
    }
    return theta >= low && high >= theta;
}

Point2 ReferenceSphere::uvOf(const Point3& p) const {
    const double phi = std::asin((p[2] - cz) / radius);
    const double v = 1.0 - (phi - minPhi) / (maxPhi - minPhi);
    const double c = std::cos(phi);
    double theta = std::atan2(((p[0] - cx) / radius) / c, ((p[1] - cy) / radius) / c);
    if (theta < 0.0 && maxTheta >= theta + 6.283185307179586) theta = theta + 6.283185307179586;
    return {(theta - minTheta) / (maxTheta - minTheta), v};
}

Point3 ReferenceSphere::positionAt(double u, double v) const {
    const double theta = (1.0 - u) * minTheta + u * maxTheta;
    const double phi = (1.0 - v) * maxPhi + v * minPhi;
    const double x = std::sin(theta) * radius * std::cos(phi) + cx;
    const double y = std::cos(theta) * radius * std::cos(phi) + cy;
    const double z = std::sin(phi) * radius + cz;
    return {x, y, z};
}

std::vector<Intersection> ReferenceSphere::wallHits(const Point3& from, const Point3& to) const {
    const double ox = from[0] - cx;
    const double oy = from[1] - cy;
    const double oz = from[2] - cz;
    const double ux = to[0] - from[0];
    const double uy = to[1] - from[1];
    const double uz = to[2] - from[2];
    const double len = std::sqrt(ux * ux + uy * uy + uz * uz);
    const double dx = ux / len;
    const double dy = uy / len;
    const double dz = uz / len;
    const double a = dx * dx + dy * dy + dz * dz;
    const double b = 2.0 * (ox * dx + oy * dy + oz * dz);
    const double c = ox * ox + oy * oy + oz * oz - radius * radius;
    const double disc = b * b - c * (4.0 * a);
    if (disc < 0.0 || std::isnan(disc)) return {};
    const double s = std::sqrt(disc);

    std::vector<Intersection> found;
    for (const double t : {(-b - s) / (2.0 * a), (s - b) / (2.0 * a)}) {
        if (!(t > 0.0)) continue;
        Intersection hit;
        hit.point = Point3(from[0] + t * dx, from[1] + t * dy, from[2] + t * dz);
        const Point3 n = normalAt(hit.point);
        hit.normalSign = signOfNumber(0.0 + dx * n[0] + dy * n[1] + dz * n[2]);
        found.push_back(hit);
    }
    return found;
}

Samples ReferenceSphere::samples(const GridRow& row) const {
    Samples result;
    if (row.count < 2) return result;
    const double phi = maxPhi - (maxPhi - minPhi) * row.v;
    const double ring = std::cos(phi) * radius;
    const double z = std::sin(phi) * radius + cz;
    const double arc = maxTheta - minTheta;
    const double theta0 = arc * row.uStart + minTheta;
    const double stepTheta = (arc * row.uEnd + minTheta - theta0) / (row.count - 1);
    const double stepU = (row.uEnd - row.uStart) / (row.count - 1);
    for (int i = 0; i < row.count; ++i) {
        const double u = i * stepU + row.uStart;
        const bool isInside = u >= 0.0 && u <= 1.0 && row.v >= 0.0 && row.v <= 1.0;
        if (!row.extrapolate && !isInside) continue;
        const double theta = i * stepTheta + theta0;
        result.insert(
            {Point<int, 2>(i, row.row), Point3(std::sin(theta) * ring + cx, std::cos(theta) * ring + cy, z)});
    }
    return result;
}

std::vector<Point3> ReferenceSphere::calibrationPoints(int columns, int rows) const {
    std::vector<Point3> points;
    for (int i = 0; i < columns; ++i) {
        for (int j = 0; j < rows; ++j) {
            const double stepTheta = (maxTheta - minTheta) / (columns - 1);
            const double stepPhi = (minPhi - maxPhi) / (rows - 1);
            const double theta = i * stepTheta + minTheta;
            const double phi = j * stepPhi + maxPhi;
            points.emplace_back(radius * std::sin(theta) * std::cos(phi),
                                radius * std::cos(theta) * std::cos(phi), radius * std::sin(phi));
        }
    }
    return points;
}

int ReferenceSphere::thetaSamples() const {
    const double degrees = (maxTheta - minTheta) * 57.2957795131;
    return isCount(degrees) ? static_cast<int>(degrees) / 2 : 0;
}

int ReferenceSphere::phiSamples() const {
    const double degrees = (maxPhi - minPhi) * 57.2957795131;
    return isCount(degrees) ? static_cast<int>(degrees) / 2 : 0;
}

int ReferenceSphere::outlineCount() const {
    return std::max(thetaSamples(), phiSamples());
}

Outline ReferenceSphere::outline() const {
    const int nTheta = thetaSamples();
    const int nPhi = phiSamples();
    Outline edges(4);
    for (int i = 0; i < nTheta; ++i) {
        edges[0].push_back(positionAt(0.0, static_cast<double>(i) / nTheta));
        edges[2].push_back(positionAt(1.0, static_cast<double>(nTheta - i) / nTheta));
    }
    for (int j = 0; j < nPhi; ++j) {
        edges[1].push_back(positionAt(static_cast<double>(j) / nPhi, 1.0));
        edges[3].push_back(positionAt(static_cast<double>(nPhi - j) / nPhi, 0.0));
    }
    return edges;
}

DisplayGeometry ReferenceSphere::displayGeometry() const {
    DisplayGeometry display;
    display.viewPoint = Point3(0.0, viewFactor(radius) * radius, 0.0);
    display.indices = gridIndices();
    for (int vertex = 0; vertex < 10000; ++vertex) {
        const double r = std::floor(vertex / 100.0);
        const double c = vertex % 100;
        const double phi = ((minPhi - maxPhi) * r) / 99.0 + maxPhi;
        const double theta = ((maxTheta - minTheta) * c) / 99.0 + minTheta;
        display.vertices.emplace_back(std::sin(theta) * radius * std::cos(phi) + cx,
                                      std::cos(theta) * radius * std::cos(phi) + cy,
                                      std::sin(phi) * radius + cz);
        display.normals.emplace_back(-(std::cos(phi) * std::sin(theta)), -(std::cos(theta) * std::cos(phi)),
                                     -std::sin(phi));
    }
    return display;
}

Point3 ReferenceSphere::heading() const {
    const double azimuthGap = 6.283185307179586 - (maxTheta - minTheta);
    const double topGap = 3.141592653589793 - 2.0 * maxPhi;
    const double bottomGap = 2.0 * minPhi + 3.141592653589793;
    if (azimuthGap >= topGap && azimuthGap >= bottomGap) {
        const double theta = (maxTheta + minTheta) * 0.5;
        return {std::sin(theta), std::cos(theta), 0.0};
    }
    if (bottomGap >= topGap) return {0.0, 0.0, 1.0};
    return {0.0, 0.0, -1.0};
}

double ReferenceSphere::maxAngle() const {
    const Point3 h = heading();
    const double headingLength = std::sqrt(h[0] * h[0] + h[1] * h[1] + h[2] * h[2]);
    double largest = 0.0;
    for (const auto& edge : outline()) {
        for (const Point3& p : edge) {
            const double len = std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
            const double angle =
                std::acos((p[0] / len) * (h[0] / headingLength) + (p[1] / len) * (h[1] / headingLength) +
                          (p[2] / len) * (h[2] / headingLength));
            if (angle > largest) largest = angle;
        }
    }
    return largest;
}

}  // namespace quarn::test
