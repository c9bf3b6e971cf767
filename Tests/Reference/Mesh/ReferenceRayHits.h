/// \file
/// Reference implementation of the search for the hits of a ray: one cast after the other.
#pragma once

#include <vector>

#include <QuarnScreen/Detail/Mesh/RayScene.h>
#include <QuarnScreen/Detail/Platform/Sign.h>
#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Ray.h>

namespace quarn::test {

/// The hits in the order in which the casts find them.
inline IntersectionSet referenceRayHits(const detail::RayScene& scene, const std::vector<Triangle>& triangles,
                                        const ::Ray& ray) {
    const Point<double, 3> direction = ray.target - ray.origin;
    const detail::RayScene::Vector origin = detail::RayScene::narrowed(ray.origin);
    const detail::RayScene::Vector narrowDirection = detail::RayScene::narrowed(direction);
    IntersectionSet hits;
    float nearest = 0.0F;
    for (int i = 0; i < 10; ++i) {
        const auto hit = scene.cast(origin, narrowDirection, nearest);
        if (!hit || hit->triangle >= triangles.size()) break;
        const Triangle& triangle = triangles[hit->triangle];
        Intersection intersection;
        intersection.point = hit->position;
        intersection.hasUV = true;
        intersection.uv = triangle.uvAt(hit->a, hit->b);
        intersection.triangleIndex = static_cast<int>(hit->triangle);
        intersection.normalSign = detail::signOf(dot(direction, triangle.normal));
        hits.add(intersection);
        nearest = hit->distance + 0.001F;
    }
    return hits;
}

}  // namespace quarn::test
