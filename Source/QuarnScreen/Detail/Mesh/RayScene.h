/// \file
/// The ray tracer, and a mesh in it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <QuarnScreen/Point.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// A triangle mesh as the ray tracer sees it: in single precision, built for exactness before speed.
///
/// The first scene of the process opens the tracer and the last one closes it, on whatever threads they are. No result
/// of the tracer is checked: where it fails, rays hit nothing. cast() may run on any number of threads; upload() must
/// not overlap with it.
class RayScene {
public:
    /// Position or direction in single precision.
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

    /// Replaces the mesh. Intended: without triangles the old one stays.
    void upload(const std::vector<Triangle>& triangles);

    /// The first hit at or after \p nearest, in lengths of the direction. A ray that the tracer cannot work with hits
    /// nothing: one with a coordinate that is NaN, infinite, or beyond 1.844e18.
    [[nodiscard]] std::optional<Hit> cast(const Vector& origin, const Vector& direction, float nearest) const;

    /// A position or direction narrowed, coordinate by coordinate.
    [[nodiscard]] static Vector narrowed(const Point<double, 3>& point);

private:
    struct Tracer;
    std::unique_ptr<Tracer> tracer;
};

}  // namespace quarn::detail
