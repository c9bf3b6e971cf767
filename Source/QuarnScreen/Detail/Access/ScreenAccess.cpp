#include "ScreenAccess.h"

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/Detail/Search/TriangleContainment.h>
#include <QuarnScreen/Detail/Shapes/HitPair.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/MeshScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn::detail {

namespace {

template <class Screen>
auto onSectionOf(const Screen& screen) {
    return [&screen](const Intersection& hit) { return screen.isOnScreenSection(hit.point); };
}

}  // namespace

std::optional<Intersection> ScreenAccess::firstHit(const FlatScreen& screen, const Ray& ray) {
    const auto hit = screen.intersectWithExtrapolation(ray.origin, ray.target);
    return hit && screen.isOnScreenSection(hit->point) ? hit : std::nullopt;
}

std::optional<Intersection> ScreenAccess::firstHit(const CylinderScreen& screen, const Ray& ray) {
    return screen.intersectWithExtrapolation(ray.origin, ray.target).firstOf(onSectionOf(screen));
}

std::optional<Intersection> ScreenAccess::firstHit(const SphericalScreen& screen, const Ray& ray) {
    return screen.intersectWithExtrapolation(ray.origin, ray.target).firstOf(onSectionOf(screen));
}

std::optional<Intersection> ScreenAccess::firstHit(const RuledSurfaceScreen& screen, const Ray& ray) {
    return screen.intersectWithExtrapolation(ray.origin, ray.target, false);
}

RayHitSearch ScreenAccess::hitSearch(const MeshScreen& screen) {
    return {*screen.scene, screen.triangles};
}

std::optional<Point<double, 3>> ScreenAccess::positionAt(const MeshScreen& screen,
                                                         const Point<double, 2>& uv) {
    if (!screen.hasParameterization()) return std::nullopt;
    const Triangle* const triangle = screen.findTriangleAtUV(uv);
    if (triangle == nullptr) return std::nullopt;
    const UVParameters parameters = parametersOf(*triangle, uv);
    return triangle->pointAt(parameters.a, parameters.b);
}

Point<double, 3> ScreenAccess::extrapolatedPositionAt(const MeshScreen& screen, const Point<double, 2>& uv) {
    return screen.extrapolateUV(uv);
}

}  // namespace quarn::detail
