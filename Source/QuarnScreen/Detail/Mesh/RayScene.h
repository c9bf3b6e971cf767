/// \file
/// Meshes in the ray tracer.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <QuarnScreen/Point.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// A triangle mesh in the ray tracer: single precision, with settings for accuracy over speed.
///
/// The first scene of the process opens the ray tracer and the last one closes it, on any threads.
/// Errors of the ray tracer are not reported: after an error, rays hit nothing.
///
/// Thread-safety: cast(), collect() and positionAt() may run on any number of threads at once.
/// upload() must not overlap with them.
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

    /// The corners of a triangle.
    using Corners = std::array<Vector, 3>;

    /// A ray in single precision.
    struct Ray {
        Vector origin = {};
        Vector direction = {};
    };

    /// A triangle that a ray crosses.
    struct Crossing {
        float distance = 0.0F;  ///< Along the ray, in lengths of its direction.
        float a = 0.0F;         ///< Parameters of the position, as of Triangle::pointAt().
        float b = 0.0F;
        std::uint32_t triangle = 0;  ///< Index of the triangle.
    };

    /// The crossings of one ray, in no particular order.
    class Crossings {
    public:
        static constexpr std::size_t kCapacity = 16;

        void clear() { total = 0; }
        /// Appends a crossing, which is only counted beyond the capacity.
        void add(const Crossing& crossing) {
            if (total < kCapacity) list[total] = crossing;
            ++total;
        }
        /// Returns true if no crossing was beyond the capacity.
        [[nodiscard]] bool areComplete() const { return total <= kCapacity; }
        /// Returns the crossings within the capacity.
        [[nodiscard]] std::span<Crossing> stored() {
            return std::span(list).first(std::min(total, kCapacity));
        }

    private:
        std::array<Crossing, kCapacity> list;  // the first `total` are set
        std::size_t total = 0;
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

    /// Finds all triangles that a ray crosses at or after its origin. The crossings are those of
    /// cast(), with the same bits. A ray that the ray tracer does not support has none.
    void collect(const Ray& ray, Crossings& crossings) const;

    /// Returns the position of a crossing, as cast() returns it.
    [[nodiscard]] Point<double, 3> positionAt(const Crossing& crossing) const;

    /// Returns the corners of a triangle of the scene.
    /// \pre the scene contains the triangle
    [[nodiscard]] Corners cornersOf(std::uint32_t triangle) const;

    /// Rounds each coordinate of a position or a direction to single precision.
    [[nodiscard]] static Vector narrowed(const Point<double, 3>& point);

private:
    struct Tracer;
    std::unique_ptr<Tracer> tracer;
};

}  // namespace quarn::detail
