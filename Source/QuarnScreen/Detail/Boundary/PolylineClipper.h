/// \file
/// Clipping of polylines in UV.
#pragma once

#include <vector>

#include <QuarnScreen/Point.h>

#include "PointInPolygon.h"

namespace quarn::detail {

/// Clips polylines to a polygon.
class PolylineClipper {
public:
    using Polyline = std::vector<Point<double, 2>>;

    explicit PolylineClipper(Polyline polygonPoints);

    /// Appends the parts of a polyline inside of the polygon to \p pieces.
    ///
    /// \note Intended: a polyline that starts outside gives an empty first piece. A segment with
    ///       both ends outside is skipped, even if it crosses the polygon. A reader would expect no
    ///       empty piece, and the part inside of the polygon.
    void clip(const Polyline& polyline, std::vector<Polyline>& pieces) const;

private:
    enum class Crossing { Entering, Leaving };

    void appendCrossing(const Point<double, 2>& from, const Point<double, 2>& to, Crossing direction,
                        std::vector<Polyline>& pieces) const;

    Polyline polygon;
    PolygonBands bands;
};

/// Returns the intersection of the closed segments a-b and c-d; NaN in both coordinates if there is
/// none.
[[nodiscard]] Point<double, 2> intersectSegments(const Point<double, 2>& a, const Point<double, 2>& b,
                                                 const Point<double, 2>& c, const Point<double, 2>& d);

}  // namespace quarn::detail
