/// \file
/// Queries that return values instead of filling containers.
#pragma once

#include <optional>
#include <span>

#include <QuarnScreen/Detail/Mesh/RayHits.h>
#include <QuarnScreen/Intersection.h>
#include <QuarnScreen/Point.h>
#include <QuarnScreen/Ray.h>

class CylinderScreen;
class FlatScreen;
class MeshScreen;
class RuledSurfaceScreen;
class SphericalScreen;

namespace quarn::detail {

/// The queries of the screens without locks and caches, and all but the extrapolation without
/// memory allocation. The results have the
/// bits of the public operations of the same class; a derived class may override those.
///
/// Thread-safety: as for the const operations of the screens.
struct ScreenAccess {
    /// Returns the first hit of IScreenGeometry::intersect().
    [[nodiscard]] static std::optional<Intersection> firstHit(const FlatScreen& screen, const Ray& ray);
    [[nodiscard]] static std::optional<Intersection> firstHit(const CylinderScreen& screen, const Ray& ray);
    [[nodiscard]] static std::optional<Intersection> firstHit(const SphericalScreen& screen, const Ray& ray);
    [[nodiscard]] static std::optional<Intersection> firstHit(const RuledSurfaceScreen& screen,
                                                              const Ray& ray);

    /// Returns the search for the hits of MeshScreen::intersect(). The screen must outlive it.
    [[nodiscard]] static RayHitSearch hitSearch(const MeshScreen& screen);

    /// Returns the position of a UV on the mesh; nothing if no triangle contains it.
    [[nodiscard]] static std::optional<Point<double, 3>> positionAt(const MeshScreen& screen,
                                                                    const Point<double, 2>& uv);

    /// Returns the position of a UV off the mesh, as MeshScreen::mapInto3D() extrapolates it.
    /// \pre the screen has a parameterization
    [[nodiscard]] static Point<double, 3> extrapolatedPositionAt(const MeshScreen& screen,
                                                                 const Point<double, 2>& uv);
};

}  // namespace quarn::detail
