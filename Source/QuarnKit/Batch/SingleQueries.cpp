#include "SingleQueries.h"

#include <QuarnKit/Base/IsFinite.h>
#include <QuarnScreen/Detail/Access/ScreenAccess.h>

#include "ScreenKinds.h"

namespace quarn {

namespace {

using detail::ScreenAccess;

MappedPoint<3> positionOnMesh(const MeshScreen& mesh, const Point<double, 2>& uv, BeyondScreen beyond) {
    if (const auto position = ScreenAccess::positionAt(mesh, uv))
        return isFinite(*position) ? MappedPoint<3>{Found::OnScreen, *position} : MappedPoint<3>();
    if (beyond == BeyondScreen::Reject || !mesh.hasParameterization()) return {};
    const Point<double, 3> position = ScreenAccess::extrapolatedPositionAt(mesh, uv);
    return isFinite(position) ? MappedPoint<3>{Found::Extrapolated, position} : MappedPoint<3>();
}

}  // namespace

MappedPoint<3> positionAt(const IScreenGeometry& screen, const Point<double, 2>& uv, BeyondScreen beyond) {
    if (const MeshScreen* const mesh = asMesh(screen)) return positionOnMesh(*mesh, uv, beyond);
    Point<double, 3> point;
    if (screen.mapInto3D(uv, point, false) && isFinite(point)) return {Found::OnScreen, point};
    if (beyond == BeyondScreen::Extrapolate && screen.mapInto3D(uv, point, true) && isFinite(point))
        return {Found::Extrapolated, point};
    return {};
}

MappedPoint<2> uvAt(const IScreenGeometry& screen, const Point<double, 3>& position, BeyondScreen beyond) {
    const auto isValid = [](const Point<double, 2>& uv) { return isFinite(uv) && uv != kNoUV; };
    if (screen.isOnScreenSection(position)) {
        const Point<double, 2> uv = screen.mapInto2D(position, false);
        if (isValid(uv)) return {Found::OnScreen, uv};
    }
    if (beyond == BeyondScreen::Extrapolate) {
        const Point<double, 2> uv = screen.mapInto2D(position, true);
        if (isValid(uv)) return {Found::Extrapolated, uv};
    }
    return {};
}

Intersection withUV(Intersection hit, const IScreenGeometry& screen) {
    if (!hit.hasUV) hit.uv = screen.mapInto2D(hit.point, false);
    hit.hasUV = true;
    return hit;
}

}  // namespace quarn
