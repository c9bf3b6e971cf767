#include "RayHits.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Detail/Platform/Sign.h>

namespace quarn::detail {
namespace {

using Crossing = RayScene::Crossing;

// Distance after a hit at which the search continues, in lengths of the ray's direction. It is
// large enough that single precision does not find the same surface again.
constexpr float kStepBehindHit = 0.001F;

// Relative error of a distance that the search accepts. Floats are good to 1e-7; the distance of a
// triangle that is seen edge-on may be off by any amount.
constexpr double kMaxDistanceError = 5e-5;

// Coordinate of a direction below which the ray tracer uses this one instead.
constexpr double kMinCoordinate = 1e-18;

// Relative difference below which two crossings may be in either order, as both may have that
// error.
constexpr float kOrderTolerance = 1e-4F;

// Relative difference up to which a cast may find the crossing at which it starts: the ray tracer
// compares products, which are rounded to 1.2e-7.
constexpr float kStartTolerance = 1e-6F;

RayScene::Ray narrowed(const Ray& ray) {
    return {RayScene::narrowed(ray.origin), RayScene::narrowed(ray.target - ray.origin)};
}

// Also true for NaN.
bool areNearlyEqual(float a, float b, float tolerance) {
    return !(std::abs(a - b) > tolerance * std::max(std::abs(a), std::abs(b)));
}

// True if the ray is between two planes across an axis at the distance of a crossing. Coordinates
// are relative to the ray's origin.
bool isBetween(double low, double high, double direction, double distance) {
    const double size = std::abs(direction);
    if (size < kMinCoordinate) return low <= -kMinCoordinate * distance && high >= kMinCoordinate * distance;
    const double slack = kMaxDistanceError * size * distance;
    return low - slack <= direction * distance && direction * distance <= high + slack;
}

// True if the ray is in the triangle's bounding box at the distance of a crossing. If not, casts
// may find the crossing or not, depending on where they start, because they skip boxes.
bool isInBox(const RayScene::Ray& ray, const Crossing& crossing, const RayScene::Corners& corners) {
    for (std::size_t i = 0; i < 3; ++i) {
        const auto [low, high] = std::minmax({corners[0][i], corners[1][i], corners[2][i]});
        const double origin = ray.origin[i];
        if (!isBetween(low - origin, high - origin, ray.direction[i], crossing.distance)) return false;
    }
    return true;
}

// Moves the crossings that casts find to the front, nearest first. Returns their number; nothing if
// rounding may decide about one of them.
std::optional<std::size_t> selectHits(std::span<Crossing> sorted) {
    std::size_t count = 0;
    float nearest = 0.0F;
    for (std::size_t i = 0; i < sorted.size() && count < RayHits::kMaxHits; ++i) {
        const float distance = sorted[i].distance;
        if (count > 0) {
            if (areNearlyEqual(distance, nearest, kOrderTolerance)) return std::nullopt;
            if (distance < nearest) continue;
        }
        if (i + 1 < sorted.size() && areNearlyEqual(distance, sorted[i + 1].distance, kOrderTolerance))
            return std::nullopt;
        nearest = distance + kStepBehindHit;
        if (areNearlyEqual(distance, nearest, kStartTolerance)) return std::nullopt;
        sorted[count++] = sorted[i];
    }
    return count;
}

double squaredDistance(const Point<double, 3>& a, const Point<double, 3>& b) {
    const Point<double, 3> offset = a - b;
    return dot(offset, offset);
}

}  // namespace

const Intersection* RayHits::nearestTo(const Point<double, 3>& from) const {
    if (count == 0) return nullptr;
    std::size_t best = 0;
    for (std::size_t i = 1; i < count; ++i)
        if (squaredDistance(hits[best].point, from) > squaredDistance(hits[i].point, from)) best = i;
    return &hits[best];
}

void RayHitSearch::find(const Ray& ray, RayHits& hits) const {
    const RayScene::Ray narrow = narrowed(ray);
    RayScene::Crossings crossings;
    scene.collect(narrow, crossings);
    addHits(ray, narrow, crossings, hits);
}

void RayHitSearch::find(std::span<const Ray> rays, std::span<RayHits> hits) const {
    QUARN_ASSERT(rays.size() <= kPacketSize && rays.size() <= hits.size());
    std::array<RayScene::Ray, kPacketSize> narrow;
    std::array<RayScene::Crossings, kPacketSize> crossings;
    for (std::size_t i = 0; i < rays.size(); ++i) {
        narrow[i] = narrowed(rays[i]);
        scene.collect(narrow[i], crossings[i]);
        prefetchTriangles(crossings[i].stored());
    }
    for (std::size_t i = 0; i < rays.size(); ++i) addHits(rays[i], narrow[i], crossings[i], hits[i]);
}

// Triangles are far apart in memory, and the hits of a packet are computed one after the other.
void RayHitSearch::prefetchTriangles(std::span<const Crossing> crossings) const {
    for (const Crossing& crossing : crossings) {
        if (crossing.triangle >= triangles.size()) continue;
        const Triangle& triangle = triangles[crossing.triangle];
        __builtin_prefetch(&triangle.vertices[0].uv);
        __builtin_prefetch(&triangle.normal);
        __builtin_prefetch(&triangle.uvEdge1);
        __builtin_prefetch(&triangle.uvEdge2);
    }
}

void RayHitSearch::addHits(const Ray& ray, const RayScene::Ray& narrow, RayScene::Crossings& crossings,
                           RayHits& hits) const {
    hits.clear();
    if (!crossings.areComplete() || !addCollectedHits(ray, narrow, crossings.stored(), hits))
        addHitsByCasts(ray, narrow, hits);
}

bool RayHitSearch::addCollectedHits(const Ray& ray, const RayScene::Ray& narrow,
                                    std::span<Crossing> crossings, RayHits& hits) const {
    for (const Crossing& crossing : crossings)
        if (!isInBox(narrow, crossing, scene.cornersOf(crossing.triangle))) return false;
    std::sort(crossings.begin(), crossings.end(),
              [](const Crossing& a, const Crossing& b) { return a.distance < b.distance; });
    const std::optional<std::size_t> count = selectHits(crossings);
    if (!count) return false;
    for (const Crossing& crossing : crossings.first(*count)) {
        // The scene may be older than the triangles, and contain more of them.
        if (crossing.triangle >= triangles.size()) break;
        hits.add(hitAt(ray, scene.positionAt(crossing), crossing.triangle, crossing.a, crossing.b));
    }
    return true;
}

void RayHitSearch::addHitsByCasts(const Ray& ray, const RayScene::Ray& narrow, RayHits& hits) const {
    float nearest = 0.0F;
    for (std::size_t i = 0; i < RayHits::kMaxHits; ++i) {
        const auto hit = scene.cast(narrow.origin, narrow.direction, nearest);
        if (!hit || hit->triangle >= triangles.size()) return;
        hits.add(hitAt(ray, hit->position, hit->triangle, hit->a, hit->b));
        nearest = hit->distance + kStepBehindHit;
    }
}

Intersection RayHitSearch::hitAt(const Ray& ray, const Point<double, 3>& position, std::uint32_t triangle,
                                 double a, double b) const {
    const Triangle& hitTriangle = triangles[triangle];
    Intersection hit;
    hit.point = position;
    hit.hasUV = true;
    hit.uv = hitTriangle.uvAt(a, b);
    hit.triangleIndex = static_cast<int>(triangle);
    hit.normalSign = signOf(dot(ray.target - ray.origin, hitTriangle.normal));
    return hit;
}

}  // namespace quarn::detail
