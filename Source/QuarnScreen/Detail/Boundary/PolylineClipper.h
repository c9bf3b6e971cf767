/// \file
/// Lines in UV, cut off at the outline of a mesh.
#pragma once

#include <vector>

#include <QuarnScreen/Point.h>

#include "PointInPolygon.h"

namespace quarn {

/// Cuts polylines at an outline.
class OutlineClipper {
public:
    using Polyline = std::vector<Point<double, 2>>;

    explicit OutlineClipper(Polyline outlinePoints);

    /// Appends the parts of a polyline inside of the outline to \p pieces.
    ///
    /// Intended: a line that begins outside gives an empty first piece, and a segment with both ends outside is passed
    /// over even where it crosses the outline.
    void clip(const Polyline& polyline, std::vector<Polyline>& pieces) const;

private:
    void appendCrossing(const Point<double, 2>& from, const Point<double, 2>& to, bool isEntering,
                        std::vector<Polyline>& pieces) const;

    Polyline outline;
    OutlineBands bands;
};

/// Where the segments a-b and c-d meet, ends included; NaN in both coordinates where they do not.
[[nodiscard]] Point<double, 2> intersectSegments(const Point<double, 2>& a, const Point<double, 2>& b,
                                                 const Point<double, 2>& c, const Point<double, 2>& d);

}  // namespace quarn
