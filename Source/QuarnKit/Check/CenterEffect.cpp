#include "CenterEffect.h"

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn {

namespace {

std::optional<Point<double, 3>> unlessZero(const Point<double, 3>& center) {
    if (center == Point<double, 3>()) return std::nullopt;
    return center;
}

}  // namespace

std::optional<Point<double, 3>> ignoredCenterOf(const IScreenGeometry& screen, CenterQuery query) {
    if (const auto* const cylinder = dynamic_cast<const CylinderScreen*>(&screen)) {
        const Point<double, 3> center = cylinder->getParams().center;
        return unlessZero(query == CenterQuery::Rays ? Point<double, 3>(center[0], center[1], 0.0) : center);
    }
    const auto* const sphere = dynamic_cast<const SphericalScreen*>(&screen);
    if (sphere == nullptr || query == CenterQuery::Rays) return std::nullopt;
    return unlessZero(sphere->getParams().center);
}

}  // namespace quarn
