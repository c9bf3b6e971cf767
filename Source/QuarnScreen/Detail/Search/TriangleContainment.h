/// \file
/// Containment of positions and UVs in a triangle.
#pragma once

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Maximum distance of a position from the plane of a triangle that contains it, in the mesh's
/// unit. It allows for the rounding of positions in double precision, but not for the ray tracer's
/// single precision.
inline constexpr double kContainmentDistance = 1e-5;

/// The result of a containment test.
struct Containment {
    bool contains = false;
    /// Parameters of the position's projection; 0 if the projection is outside of the triangle.
    double a = 0.0;
    double b = 0.0;
};

/// Tests if a triangle contains a position: if the position's projection lies in the triangle, at
/// most kContainmentDistance away.
[[nodiscard]] Containment testContainment(const Triangle& triangle, const Point<double, 3>& point);

/// The parameters (a, b) of Triangle::pointAt() at which a triangle has a UV.
struct UVParameters {
    double a;
    double b;

    /// Returns true if the UV lies in the closed triangle. There is no tolerance.
    [[nodiscard]] bool isInside() const { return a >= 0.0 && b >= 0.0 && 1.0 >= a + b; }
};

/// Returns the parameters of a UV, which may lie outside of the triangle.
///
/// Source: Cramer's rule.
/// \pre `triangle.uvDeterminant` is not 0
[[nodiscard]] inline UVParameters parametersOf(const Triangle& triangle, const Point<double, 2>& uv) {
    QUARN_ASSERT(triangle.uvDeterminant != 0.0);
    const double du = uv[0] - triangle.vertices[0].uv[0];
    const double dv = uv[1] - triangle.vertices[0].uv[1];
    return {(du * triangle.uvEdge2[1] - dv * triangle.uvEdge2[0]) / triangle.uvDeterminant,
            (dv * triangle.uvEdge1[0] - du * triangle.uvEdge1[1]) / triangle.uvDeterminant};
}

}  // namespace quarn::detail
