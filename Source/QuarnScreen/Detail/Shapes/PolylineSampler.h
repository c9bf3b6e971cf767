/// \file
/// Polylines of positions that a screen maps from UV.
#pragma once

#include <iterator>
#include <vector>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn::detail {

/// Appends positions by UV to a polyline. Skips UVs that the screen does not map.
class PolylineSampler {
public:
    PolylineSampler(const IScreenGeometry& sampledScreen, std::vector<Point<double, 3>>& sampledPolyline)
        : screen(sampledScreen), polyline(sampledPolyline) {}

    void sample(double u, double v) {
        Point<double, 3> point;
        if (screen.mapInto3D(Point<double, 2>(u, v), point, true)) polyline.push_back(point);
    }

private:
    const IScreenGeometry& screen;
    std::vector<Point<double, 3>>& polyline;
};

/// Moves polylines to the end of others.
inline void appendPolylines(IScreenGeometry::Polylines& polylines, IScreenGeometry::Polylines&& appended) {
    polylines.insert(polylines.end(), std::make_move_iterator(appended.begin()),
                     std::make_move_iterator(appended.end()));
}

}  // namespace quarn::detail
