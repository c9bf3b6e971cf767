/// \file
/// The hits of rays on a mesh.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <QuarnScreen/Intersection.h>
#include <QuarnScreen/Ray.h>
#include <QuarnScreen/Triangle.h>

#include "RayScene.h"

namespace quarn::detail {

/// The hits of one ray in the order in which they are found, at most ten. Unlike IntersectionSet,
/// it does not allocate memory.
class RayHits {
public:
    static constexpr std::size_t kMaxHits = 10;

    /// Appends a hit.
    /// \pre fewer than kMaxHits hits have been added
    void add(const Intersection& hit) { hits[count++] = hit; }
    void clear() { count = 0; }

    [[nodiscard]] std::span<const Intersection> found() const { return std::span(hits).first(count); }

    /// Returns the hit that is the first of all after IntersectionSet::sort(); null for a miss.
    [[nodiscard]] const Intersection* nearestTo(const Point<double, 3>& from) const;

private:
    std::array<Intersection, kMaxHits> hits;
    std::size_t count = 0;
};

/// Computes the hits that casts find one after the other, each from a thousandth of the direction's
/// length behind the previous hit.
///
/// One traversal of the scene collects all crossings. Where rounding could decide about their order
/// or number, the casts are made instead, so that the result is always theirs.
class RayHitSearch {
public:
    /// Maximum number of rays of a packet.
    static constexpr std::size_t kPacketSize = 8;

    /// \param traced scene of the triangles
    /// \param hitTriangles the mesh; it may have fewer triangles than the scene
    RayHitSearch(const RayScene& traced, const std::vector<Triangle>& hitTriangles)
        : scene(traced), triangles(hitTriangles) {}

    /// Replaces \p hits by those of a ray.
    void find(const Ray& ray, RayHits& hits) const;

    /// Replaces each element of \p hits by the hits of one of the rays. The triangles of all hits
    /// are fetched at once, which is faster than one ray after the other if the rays hit distant
    /// parts of the mesh.
    ///
    /// The ray tracer's own packets are not used. Their traversal of nearly parallel rays tests
    /// boxes for all of them together, and so finds other hits beside edges.
    /// \pre 1 to kPacketSize rays, and as many elements
    void find(std::span<const Ray> rays, std::span<RayHits> hits) const;

private:
    void prefetchTriangles(std::span<const RayScene::Crossing> crossings) const;
    void addHits(const Ray& ray, const RayScene::Ray& narrow, RayScene::Crossings& crossings,
                 RayHits& hits) const;
    [[nodiscard]] bool addCollectedHits(const Ray& ray, const RayScene::Ray& narrow,
                                        std::span<RayScene::Crossing> crossings, RayHits& hits) const;
    void addHitsByCasts(const Ray& ray, const RayScene::Ray& narrow, RayHits& hits) const;
    [[nodiscard]] Intersection hitAt(const Ray& ray, const Point<double, 3>& position, std::uint32_t triangle,
                                     double a, double b) const;

    const RayScene& scene;
    const std::vector<Triangle>& triangles;
};

}  // namespace quarn::detail
