/// \file
/// Meshes in the ray tracer.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <QuarnScreen/Point.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// A triangle mesh in the ray tracer: single precision, with settings for accuracy over speed.
///
/// The first scene of the process opens the ray tracer and the last one closes it, on any threads.
/// Errors of the ray tracer are not reported: after an error, rays hit nothing.
///
/// Thread-safety: cast() may run on any number of threads at once. upload() must not overlap with
/// it.
class RayScene {
public:
    /// A position or a direction in single precision.
    using Vector = std::array<float, 3>;

    struct Hit {
        Point<double, 3> position;   ///< On the triangle, interpolated from its corners.
        std::uint32_t triangle = 0;  ///< Index of the triangle.
        float distance = 0.0F;       ///< Along the ray, in lengths of its direction.
        double a = 0.0;              ///< Parameters of the position, as of Triangle::pointAt().
        double b = 0.0;
    };

    RayScene();
    RayScene(const RayScene&) = delete;
    RayScene& operator=(const RayScene&) = delete;
    ~RayScene();

    /// Replaces the mesh.
    /// \note Intended: without triangles the previous mesh is kept; a reader would expect an empty
    ///       scene.
    void upload(const std::vector<Triangle>& triangles);

    /// Returns the first hit at or after the distance \p nearest, in lengths of the direction. A
    /// ray with a coordinate that is NaN, infinite or beyond 1.844e18 hits nothing, because the ray
    /// tracer does not support it.
    [[nodiscard]] std::optional<Hit> cast(const Vector& origin, const Vector& direction, float nearest) const;

    /// Rounds each coordinate of a position or a direction to single precision.
    [[nodiscard]] static Vector narrowed(const Point<double, 3>& point);

private:
    struct Tracer;
    std::unique_ptr<Tracer> tracer;
};

}  // namespace quarn::detail
