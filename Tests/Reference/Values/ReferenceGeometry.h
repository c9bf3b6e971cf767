/// \file
/// The geometry written out number by number, as a second way of computing it.
#pragma once

#include <array>
#include <cstddef>

namespace quarn::test::reference {

using Vec2 = std::array<double, 2>;
using Vec3 = std::array<double, 3>;

double dot(const Vec3& a, const Vec3& b);
Vec3 cross(const Vec3& a, const Vec3& b);
double length(const Vec3& a);
Vec3 normalized(const Vec3& a);

/// Positions and UVs of a triangle's corners.
struct Corners {
    std::array<Vec3, 3> position{};
    std::array<Vec2, 3> uv{};
};

/// All that a triangle derives from its corners.
struct Derived {
    Vec3 normal{};
    Vec3 edge1{};
    Vec3 edge2{};
    Vec2 uvEdge1{};
    Vec2 uvEdge2{};
    double uvDeterminant = 0.0;
    Vec3 centroid{};
    Vec2 uvCentroid{};
};

Derived derive(const Corners& corners);

/// The part of a triangle that the position queries read.
struct Frame {
    Vec3 corner{};
    Vec3 edge1{};
    Vec3 edge2{};
    Vec3 normal{};
};

bool barycentric(const Frame& frame, const Vec3& point, double& a, double& b, bool allowOutside);
bool intersectPlane(const Vec3& origin, const Vec3& target, const Frame& frame, double& t, Vec3& hit,
                    double& a, double& b, bool allowOutside);

/// Which ends of the lines A and B are clamped.
struct Clamps {
    bool aStart = false;
    bool aEnd = false;
    bool bStart = false;
    bool bEnd = false;
};

bool closestPoints(const Vec3& a0, const Vec3& a1, const Vec3& b0, const Vec3& b1, Vec3& outA, Vec3& outB,
                   const Clamps& clamps);

/// Sixteen numbers, row by row.
using Mat4 = std::array<float, 16>;

Mat4 product(const Mat4& left, const Mat4& right);
std::array<float, 3> transform(const Mat4& m, float x, float y, float z);
bool inverse(const Mat4& m, Mat4& result);

}  // namespace quarn::test::reference
