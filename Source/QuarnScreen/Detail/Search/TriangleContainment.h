/// \file
/// Which triangle contains a position.
#pragma once

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Greatest distance of a position from the plane of the triangle that contains it, in the mesh's unit: the rounding of
/// positions that were computed in double precision, and not that of the ray tracer's single precision.
inline constexpr double kContainmentDistance = 1e-5;

/// What the test of a triangle against a position found.
struct Containment {
    bool contains = false;
    double a = 0.0;  ///< Parameters of the position's foot; 0 where the foot lies outside of the triangle.
    double b = 0.0;
};

/// Whether a triangle contains a position: its foot lies in the triangle, at most kContainmentDistance away.
[[nodiscard]] Containment testContainment(const Triangle& triangle, const Point<double, 3>& point);

/// The parameters (a, b) of Triangle::pointAt() at which a triangle has a UV.
struct UVParameters {
    double a;
    double b;

    /// Whether the UV lies in the triangle, edges included; there is no tolerance.
    [[nodiscard]] bool isInside() const { return a >= 0.0 && b >= 0.0 && 1.0 >= a + b; }
};

/// Parameters of a UV, inside of the triangle or not, by Cramer's rule. \pre the triangle's `uvDeterminant` is not 0.
[[nodiscard]] inline UVParameters parametersOf(const Triangle& triangle, const Point<double, 2>& uv) {
    QUARN_ASSERT(triangle.uvDeterminant != 0.0);
    const double du = uv[0] - triangle.vertices[0].uv[0];
    const double dv = uv[1] - triangle.vertices[0].uv[1];
    return {(du * triangle.uvEdge2[1] - dv * triangle.uvEdge2[0]) / triangle.uvDeterminant,
            (dv * triangle.uvEdge1[0] - du * triangle.uvEdge1[1]) / triangle.uvDeterminant};
}

}  // namespace quarn::detail
