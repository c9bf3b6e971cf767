// Rays: what the ray tracer answers.
#include <QuarnScreen/MeshScreen.h>

#include <QuarnScreen/Detail/Mesh/RayScene.h>
#include <QuarnScreen/Detail/Platform/Sign.h>

namespace {

constexpr int kMaxHits = 10;

// How far behind a hit the search goes on, in lengths of the ray's direction: enough that single precision does not
// find the same surface again.
constexpr float kStepBehindHit = 0.001F;

}  // namespace

IntersectionSet MeshScreen::intersect(const Point<double, 3>& start, const Point<double, 3>& end) const {
    return intersectInternal(start, end);
}

IntersectionSet MeshScreen::intersectInternal(const Point<double, 3>& start,
                                              const Point<double, 3>& end) const {
    const Point<double, 3> direction = end - start;
    const quarn::detail::RayScene::Vector narrowStart = quarn::detail::RayScene::narrowed(start);
    const quarn::detail::RayScene::Vector narrowDirection = quarn::detail::RayScene::narrowed(direction);
    IntersectionSet hits;
    float nearest = 0.0F;
    for (int i = 0; i < kMaxHits; ++i) {
        const auto hit = scene->cast(narrowStart, narrowDirection, nearest);
        // The scene may be older than the triangles, and hold more of them.
        if (!hit || hit->triangle >= triangles.size()) break;
        const Triangle& triangle = triangles[hit->triangle];
        Intersection intersection;
        intersection.point = hit->position;
        intersection.hasUV = true;
        intersection.uv = triangle.uvAt(hit->a, hit->b);
        intersection.triangleIndex = static_cast<int>(hit->triangle);
        intersection.normalSign = quarn::detail::signOf(dot(direction, triangle.normal));
        hits.add(intersection);
        nearest = hit->distance + kStepBehindHit;
    }
    hits.sort(start, end);
    return hits;
}
