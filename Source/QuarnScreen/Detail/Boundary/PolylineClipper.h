/// \file
/// Lines in UV, cut off at the polygon of a mesh.
#pragma once

#include <vector>

#include <QuarnScreen/Point.h>

#include "PointInPolygon.h"

namespace quarn::detail {

/// Cuts polylines at an polygon.
class PolylineClipper {
public:
    using Polyline = std::vector<Point<double, 2>>;

    explicit PolylineClipper(Polyline polygonPoints);

    /// Appends the parts of a polyline inside of the polygon to \p pieces.
    ///
    /// Intended: a line that begins outside gives an empty first piece, and a segment with both ends outside is passed
    /// over even where it crosses the polygon.
    void clip(const Polyline& polyline, std::vector<Polyline>& pieces) const;

private:
    void appendCrossing(const Point<double, 2>& from, const Point<double, 2>& to, bool isEntering,
                        std::vector<Polyline>& pieces) const;

    Polyline polygon;
    PolygonBands bands;
};

/// Where the segments a-b and c-d meet, ends included; NaN in both coordinates where they do not.
[[nodiscard]] Point<double, 2> intersectSegments(const Point<double, 2>& a, const Point<double, 2>& b,
                                                 const Point<double, 2>& c, const Point<double, 2>& d);

}  // namespace quarn::detail
