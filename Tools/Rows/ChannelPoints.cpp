#include "Rows/ChannelPoints.h"

namespace quarn::tool {

bool ChannelPoints::hits(const Ray& ray) const {
    return !screen.intersect(ray.first, ray.second).empty();
}

void ChannelPoints::useSideOf(const Ray& ray) {
    reference = ray;
    referencePointCount = screen.intersectChannelBoundary({ray}, {}).size();
}

std::optional<Point<double, 3>> ChannelPoints::pointOf(const Ray& ray) const {
    if (!reference) return std::nullopt;
    // The screen takes the side from the first ray that hits, so the reference comes first.
    const auto points = screen.intersectChannelBoundary({*reference, ray}, {});
    if (points.size() <= referencePointCount) return std::nullopt;
    return points[referencePointCount];
}

}  // namespace quarn::tool
