#include "Reference/Values/ReferenceGeometry.h"

#include <cmath>

namespace quarn::test::reference {

double dot(const Vec3& a, const Vec3& b) {
    return ((0.0 + a[0] * b[0]) + a[1] * b[1]) + a[2] * b[2];
}

Vec3 cross(const Vec3& a, const Vec3& b) {
    const auto [ax, ay, az] = a;
    const auto [bx, by, bz] = b;
    return {ay * bz - az * by, az * bx - ax * bz, ax * by - ay * bx};
}

double length(const Vec3& a) {
    return std::sqrt(dot(a, a));
}

Vec3 normalized(const Vec3& a) {
    const double l = length(a);
    return {a[0] / l, a[1] / l, a[2] / l};
}

Derived derive(const Corners& corners) {
    Derived d;
    for (std::size_t k = 0; k < 3; ++k) {
        const double x0 = corners.position[0][k];
        const double x1 = corners.position[1][k];
        const double x2 = corners.position[2][k];
        d.edge1[k] = x1 - x0;
        d.edge2[k] = x2 - x0;
        d.centroid[k] = ((x0 + x1) + x2) * 0.333333333333333;
    }
    for (std::size_t k = 0; k < 2; ++k) {
        const double x0 = corners.uv[0][k];
        const double x1 = corners.uv[1][k];
        const double x2 = corners.uv[2][k];
        d.uvEdge1[k] = x1 - x0;
        d.uvEdge2[k] = x2 - x0;
        d.uvCentroid[k] = ((x0 + x1) + x2) * 0.333333333333333;
    }
    d.uvDeterminant = d.uvEdge2[1] * d.uvEdge1[0] - d.uvEdge2[0] * d.uvEdge1[1];
    d.normal = normalized(cross(d.edge1, d.edge2));
    if (d.normal[0] != d.normal[0] || d.normal[1] != d.normal[1] || d.normal[2] != d.normal[2])
        d.normal = {0.0, 0.0, 0.0};
    return d;
}

bool barycentric(const Frame& frame, const Vec3& point, double& a, double& b, bool allowOutside) {
    Vec3 w;
    for (std::size_t k = 0; k < 3; ++k) w[k] = point[k] - frame.corner[k];
    const double d11 = dot(frame.edge1, frame.edge1);
    const double d1w = dot(frame.edge1, w);
    const double d12 = dot(frame.edge1, frame.edge2);
    const double d2w = dot(w, frame.edge2);
    const double d22 = dot(frame.edge2, frame.edge2);
    const double det = d22 * d11 - d12 * d12;
    if (det == 0.0) return false;
    const double aFoot = (d22 * d1w - d2w * d12) * (1.0 / det);
    if (aFoot < -0.000001) return false;
    const double bFoot = (d2w * d11 - d1w * d12) * (1.0 / det);
    if (bFoot >= -0.000001 && aFoot + bFoot <= 1.000001) {
        a = aFoot;
        b = bFoot;
        return true;
    }
    if (!allowOutside) return false;
    a = aFoot;
    b = bFoot;
    return true;
}

bool intersectPlane(const Vec3& origin, const Vec3& target, const Frame& frame, double& t, Vec3& hit,
                    double& a, double& b, bool allowOutside) {
    Vec3 d;
    for (std::size_t k = 0; k < 3; ++k) d[k] = target[k] - origin[k];
    const double den = dot(frame.normal, d);
    if (std::fabs(den) < 0.000001) return false;
    t = -((dot(frame.normal, origin) - dot(frame.normal, frame.corner)) / den);
    for (std::size_t k = 0; k < 3; ++k) hit[k] = origin[k] + t * d[k];
    return barycentric(frame, hit, a, b, allowOutside);
}

bool closestPoints(const Vec3& a0, const Vec3& a1, const Vec3& b0, const Vec3& b1, Vec3& outA, Vec3& outB,
                   const Clamps& clamps) {
    Vec3 da;
    Vec3 db;
    Vec3 r;
    for (std::size_t k = 0; k < 3; ++k) {
        da[k] = a1[k] - a0[k];
        db[k] = b1[k] - b0[k];
        r[k] = a0[k] - b0[k];
    }
    if (length(da) < 0.0000000001) return false;
    if (length(db) < 0.0000000001) return false;
    const double aa = dot(da, da);
    const double bb = dot(db, db);
    const double ab = dot(da, db);
    const double e = dot(r, db);
    const double det = bb * aa - ab * ab;
    if (std::fabs(det) < 0.0000000001) return false;
    double s = (e * ab - bb * dot(da, r)) / det;
    double t = (ab * s + e) / bb;
    if (clamps.aStart && s < 0.0)
        s = 0.0;
    else if (clamps.aEnd)
        s = s < 1.0 ? s : 1.0;
    if (clamps.bStart && t < 0.0)
        t = 0.0;
    else if (clamps.bEnd)
        t = t < 1.0 ? t : 1.0;
    for (std::size_t k = 0; k < 3; ++k) {
        outA[k] = a0[k] + s * da[k];
        outB[k] = b0[k] + t * db[k];
    }
    return true;
}

Mat4 product(const Mat4& left, const Mat4& right) {
    Mat4 result{};
    for (std::size_t at = 0; at < 16; ++at) {
        const std::size_t i = at / 4;
        const std::size_t j = at % 4;
        result[at] = (((0.0F + left[4 * i] * right[j]) + left[4 * i + 1] * right[4 + j]) +
                      left[4 * i + 2] * right[8 + j]) +
                     left[4 * i + 3] * right[12 + j];
    }
    return result;
}

std::array<float, 3> transform(const Mat4& m, float x, float y, float z) {
    return {((m[3] + x * m[0]) + y * m[1]) + z * m[2],  //
            ((m[7] + x * m[4]) + y * m[5]) + z * m[6],  //
            ((m[11] + x * m[8]) + y * m[9]) + z * m[10]};
}

bool inverse(const Mat4& m, Mat4& result) {
    result = m;
    std::array<std::size_t, 4> pivot{};
    for (std::size_t j = 0; j < 4; ++j) {
        std::size_t chosen = j;
        float largest = std::fabs(result[5 * j]);
        for (std::size_t i = j + 1; i < 4; ++i) {
            const float candidate = std::fabs(result[4 * i + j]);
            if (candidate > largest) {
                largest = candidate;
                chosen = i;
            }
        }
        pivot[j] = chosen;
        const Mat4 before = result;
        for (std::size_t k = 0; k < 4; ++k) {
            result[4 * j + k] = before[4 * chosen + k];
            if (chosen != j) result[4 * chosen + k] = before[4 * j + k];
        }
        const float p = result[5 * j];
        if (std::fabs(static_cast<double>(p)) < 0.000001) return false;
        result[5 * j] = 1.0F;
        for (std::size_t k = 0; k < 4; ++k) result[4 * j + k] *= 1.0F / p;
        for (std::size_t i = 0; i < 4; ++i) {
            if (i == j) continue;
            const float f = result[4 * i + j];
            result[4 * i + j] = 0.0F;
            for (std::size_t k = 0; k < 4; ++k) result[4 * i + k] -= f * result[4 * j + k];
        }
    }
    for (std::size_t j = 4; j-- > 0;) {
        const Mat4 before = result;
        for (std::size_t i = 0; i < 4; ++i) {
            result[4 * i + j] = before[4 * i + pivot[j]];
            if (pivot[j] != j) result[4 * i + pivot[j]] = before[4 * i + j];
        }
    }
    return true;
}

}  // namespace quarn::test::reference
