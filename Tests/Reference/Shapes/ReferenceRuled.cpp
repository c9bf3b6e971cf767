#include "Reference/Shapes/ReferenceRuled.h"

#include <cmath>

namespace quarn::test {

namespace {

double distance(const Point3& a, const Point3& b) {
    const double x = a[0] - b[0];
    const double y = a[1] - b[1];
    const double z = a[2] - b[2];
    return std::sqrt(0.0 + x * x + y * y + z * z);
}

Point3 along(double t, double arc, double radius, double centerY, double z) {
    const double a = arc * t - arc * 0.5;
    return {std::sin(a) * radius + 0.0, std::cos(a) * radius + centerY, z + 0.0};
}

Point3 derivative(double t, double arc, double radius) {
    const double a = arc * t - arc * 0.5;
    return {std::cos(a) * arc * radius, -(std::sin(a) * arc * radius), 0.0};
}

// Where two endless lines come closest: false for parallel or short ones.
bool closest(const Point3& a0, const Point3& a1, const Point3& b0, const Point3& b1, Point3& onA,
             Point3& onB) {
    double aa = 0.0, bb = 0.0, ab = 0.0, rb = 0.0, ra = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double da = a1[i] - a0[i];
        const double db = b1[i] - b0[i];
        const double r = a0[i] - b0[i];
        aa += da * da;
        bb += db * db;
        ab += da * db;
        rb += r * db;
        ra += da * r;
    }
    if (std::sqrt(aa) < 1e-10 || std::sqrt(bb) < 1e-10) return false;
    const double det = bb * aa - ab * ab;
    if (std::fabs(det) < 1e-10) return false;
    const double s = (rb * ab - bb * ra) / det;
    const double t = (ab * s + rb) / bb;
    for (std::size_t i = 0; i < 3; ++i) {
        onA[i] = a0[i] + s * (a1[i] - a0[i]);
        onB[i] = b0[i] + t * (b1[i] - b0[i]);
    }
    return true;
}

}  // namespace

ReferenceRuled::ReferenceRuled(const RuledSurfaceScreenParams& params)
    : width(params.width),
      height(params.height),
      topArc(params.maxTheta - params.minTheta),
      bottomArc(params.maxPhi - params.minPhi) {
    topRadius = (width * 0.5) / std::sin(topArc * 0.5);
    bottomRadius = (width * 0.5) / std::sin(bottomArc * 0.5);
    topCenterY = -(std::cos(topArc * 0.5) * topRadius);
    bottomCenterY = -(std::cos(bottomArc * 0.5) * bottomRadius);
    topZ = height * 0.5;
    bottomZ = height * -0.5;
    double larger = topArc;
    if (topArc < bottomArc) larger = bottomArc;
    const double m = larger / 3.141592653589793;
    searchHigh = 0.5 + 0.5 / m;
    searchLow = 0.5 - 0.5 / m;
}

Point3 ReferenceRuled::top(double t) const {
    return along(t, topArc, topRadius, topCenterY, topZ);
}
Point3 ReferenceRuled::bottom(double t) const {
    return along(t, bottomArc, bottomRadius, bottomCenterY, bottomZ);
}
Point3 ReferenceRuled::topDerivative(double t) const {
    return derivative(t, topArc, topRadius);
}
Point3 ReferenceRuled::bottomDerivative(double t) const {
    return derivative(t, bottomArc, bottomRadius);
}

bool ReferenceRuled::isLeft(double t, const Point3& from, const Point3& to) const {
    const Point3 atTop = top(t);
    const Point3 atBottom = bottom(t);
    const double ex = atTop[0] - atBottom[0], ey = atTop[1] - atBottom[1], ez = atTop[2] - atBottom[2];
    const double wx = from[0] - atBottom[0], wy = from[1] - atBottom[1], wz = from[2] - atBottom[2];
    const double cx = wy * ez - wz * ey;
    const double cy = wz * ex - wx * ez;
    const double cz = wx * ey - wy * ex;
    return 0.0 + (to[0] - from[0]) * cx + (to[1] - from[1]) * cy + (to[2] - from[2]) * cz > 0.0;
}

std::optional<Intersection> ReferenceRuled::hit(const Point3& from, const Point3& to,
                                                bool extrapolate) const {
    double high = searchHigh;
    double low = searchLow;
    double mid = (low + high) * 0.5;
    if (low > high) {
        high = searchLow;
        low = searchHigh;
    }
    if (!isLeft(high, from, to)) return std::nullopt;
    if (isLeft(low, from, to)) return std::nullopt;
    while (high - low > 1e-06) {
        if (isLeft(mid, from, to)) {
            high = mid;
        } else {
            low = mid;
        }
        mid = (low + high) * 0.5;
    }
    const Point3 atTop = top(mid);
    const Point3 atBottom = bottom(mid);
    Intersection found;
    Point3 onRuling;
    if (!closest(atTop, atBottom, from, to, onRuling, found.point)) return std::nullopt;
    const double dTop = distance(onRuling, atTop);
    const double dBottom = distance(onRuling, atBottom);
    const double length = distance(atBottom, atTop);
    if (!extrapolate) {
        if (dTop > length) return std::nullopt;
        if (dBottom > length) return std::nullopt;
    }
    found.uv[0] = mid;
    found.uv[1] = dTop / length;
    found.hasUV = true;
    const Point3 n = normal(found.point);
    const double side = 0.0 + (to[0] - from[0]) * n[0] + (to[1] - from[1]) * n[1] + (to[2] - from[2]) * n[2];
    if (side > 0.0) found.normalSign = 1;
    if (side < 0.0) found.normalSign = -1;
    return found;
}

bool ReferenceRuled::isOnSection(const Point3& p) const {
    const auto found = hit(p, Point3(p[0] + 0.0, p[1] + 1.0, p[2] + 0.0), true);
    if (!found) return false;
    if (distance(p, found->point) > 1e-06) return false;
    const Point2 uv = uvOf(found->point);
    return uv[0] > -1e-06 && uv[0] < 1.000001 && uv[1] > -1e-06 && uv[1] < 1.000001;
}

Point2 ReferenceRuled::uvOf(const Point3& p) const {
    const auto found = hit(p, Point3(p[0] + 0.0, p[1] + 1.0, p[2] + 0.0), true);
    return found ? found->uv : Point2(0.0, 0.0);
}

Point3 ReferenceRuled::position(double u, double v) const {
    const Point3 atTop = top(u);
    const Point3 atBottom = bottom(u);
    return {(atBottom[0] - atTop[0]) * v + atTop[0], (atBottom[1] - atTop[1]) * v + atTop[1],
            (atBottom[2] - atTop[2]) * v + atTop[2]};
}

double ReferenceRuled::sine(double u, const Point3& p) const {
    const Point3 atTop = top(u);
    const Point3 atBottom = bottom(u);
    const double lengthR = distance(atTop, atBottom);
    const double rx = (atTop[0] - atBottom[0]) / lengthR, ry = (atTop[1] - atBottom[1]) / lengthR,
                 rz = (atTop[2] - atBottom[2]) / lengthR;
    const double lengthQ = distance(p, atBottom);
    const double qx = (p[0] - atBottom[0]) / lengthQ, qy = (p[1] - atBottom[1]) / lengthQ,
                 qz = (p[2] - atBottom[2]) / lengthQ;
    const double cx = qy * rz - qz * ry;
    const double cy = qz * rx - qx * rz;
    const double cz = qx * ry - qy * rx;
    const double magnitude = std::sqrt(0.0 + cx * cx + cy * cy + cz * cz);
    return 0.0 + cx * 0.0 + cy * 1.0 + cz * 0.0 > 0 ? magnitude : -magnitude;
}

Point3 ReferenceRuled::normal(const Point3& p) const {
    if (std::fabs(topArc) > 3.141592653589 || std::fabs(bottomArc) > 3.141592653589) ++logLines;
    const double v = (p[2] - topZ) / (bottomZ - topZ);
    double u = 0.0;
    referenceBisect([&](double t) { return sine(t, p); }, u, 0.0, 1.0, 200, 1e-05, 2.0);
    const double error = distance(p, position(u, v)) / width;
    if (!(0.01 > error)) {
        ++logLines;
        return {0.0, 0.0, 0.0};
    }
    const Point3 dT = topDerivative(u), dB = bottomDerivative(u);
    const Point3 atTop = top(u), atBottom = bottom(u);
    const double sx = v * dB[0] + (1 - v) * dT[0];
    const double sy = v * dB[1] + (1 - v) * dT[1];
    const double sz = v * dB[2] + (1 - v) * dT[2];
    const double rx = atBottom[0] - atTop[0], ry = atBottom[1] - atTop[1], rz = atBottom[2] - atTop[2];
    const double nx = ry * sz - rz * sy;
    const double ny = rz * sx - rx * sz;
    const double nz = rx * sy - ry * sx;
    const double length = std::sqrt(0.0 + nx * nx + ny * ny + nz * nz);
    const Point3 n(nx / length, ny / length, nz / length);
    const Point3 axis(0.0 + v * (0.0 - 0.0), topCenterY + v * (bottomCenterY - topCenterY),
                      topZ + v * (bottomZ - topZ));
    const double side = 0.0 + (p[0] - axis[0]) * n[0] + (p[1] - axis[1]) * n[1] + (p[2] - axis[2]) * n[2];
    return side > 0 ? n : Point3(n[0] * -1.0, n[1] * -1.0, n[2] * -1.0);
}

Point3 ReferenceRuled::closestPoint(const Point3& p) const {
    Point2 uv = uvOf(p);
    for (std::size_t i = 0; i < 2; ++i) {
        if (uv[i] < 0.0) uv[i] = 0.0;
        if (uv[i] > 1.0) uv[i] = 1.0;
    }
    const Point3 found = position(uv[0], uv[1]);
    // The screen checks whether it lies on the section, for its log lines alone.
    (void)isOnSection(found);
    return found;
}

bool referenceBisect(const std::function<double(double)>& function, double& root, double low, double high,
                     int maxIterations, double tolerance, double acceptance) {
    double mid = 0.0;
    int passes = 0;
    while (passes < maxIterations) {
        mid = (high + low) * 0.5;
        if (function(mid) <= 0) {
            low = mid;
        } else {
            high = mid;
        }
        ++passes;
        if (high - low <= tolerance) break;
    }
    root = mid;
    if (function(mid) > acceptance) return false;
    return true;
}

}  // namespace quarn::test
