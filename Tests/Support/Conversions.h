/// \file
/// From the value types to plain numbers and back, and triangles made for one question.
#pragma once

#include <cstddef>

#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/Point.h>
#include <QuarnScreen/Triangle.h>

#include "Reference/Values/ReferenceGeometry.h"
#include "Support/Rng.h"

namespace quarn::test {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;
using Matrix4 = Matrix<float, 4>;

inline reference::Vec3 plain(const Point3& p) {
    return {p[0], p[1], p[2]};
}
inline reference::Vec2 plain(const Point2& p) {
    return {p[0], p[1]};
}
inline reference::Frame plain(const Triangle& triangle) {
    return {plain(triangle.vertices[0].position), plain(triangle.edge1), plain(triangle.edge2),
            plain(triangle.normal)};
}
inline reference::Mat4 plain(const Matrix4& m) {
    reference::Mat4 result{};
    for (std::size_t at = 0; at < 16; ++at) result[at] = m(at / 4, at % 4);
    return result;
}

inline Point3 point(const reference::Vec3& v) {
    return {v[0], v[1], v[2]};
}
inline Point2 point(const reference::Vec2& v) {
    return {v[0], v[1]};
}
inline Matrix4 matrix(const reference::Mat4& m) {
    Matrix4 result;
    for (std::size_t at = 0; at < 16; ++at) result(at / 4, at % 4) = m[at];
    return result;
}

/// A triangle of three positions with computed geometry.
inline Triangle triangleOf(const Point3& p0, const Point3& p1, const Point3& p2) {
    Triangle triangle;
    triangle.vertices[0].position = p0;
    triangle.vertices[1].position = p1;
    triangle.vertices[2].position = p2;
    triangle.computeGeometry();
    return triangle;
}

/// Corners (0,0,0), (1,0,0), (0,1,0): there the parameters of (x, y, z) are x and y, without
/// rounding.
inline Triangle unitTriangle() {
    return triangleOf({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0});
}

/// Exponents of the numbers of one case.
struct Exponents {
    int low;
    int high;
};

/// Mostly a narrow window, in which numbers meet numbers of like size, somewhere in the range; else
/// all of it.
inline Exponents randomExponents(Rng& rng) {
    switch (rng.integer(0, 3)) {
        case 0:
            return {-1022, 1023};
        case 1: {
            const int low = rng.integer(-1022, 1020);
            return {low, low + 3};
        }
        case 2: {
            const int low = rng.integer(-150, 100);
            return {low, low + 30};
        }
        default:
            return {-3, 3};
    }
}

inline Point3 randomPoint(Rng& rng, const Exponents& exponents) {
    return rng.spreadPoint(exponents.low, exponents.high);
}

}  // namespace quarn::test
