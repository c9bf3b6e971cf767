/// \file
/// Reference implementation of the grid of a mesh: each point is tested against the whole boundary.
#pragma once

#include <functional>
#include <vector>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn::test {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;
using UVLine = std::vector<Point2>;
using Lines = IScreenGeometry::Polylines;

/// Where a grid gets its data from.
struct GridSources {
    std::function<void(Lines&)> sampleBoundary;
    std::function<void(UVLine&)> sampleBoundaryUV;
    std::function<bool(const Point2&, Point3&)> mapInto3D;  // with extrapolation
};

/// The operations of a screen. It must outlive them.
[[nodiscard]] GridSources sourcesOf(const IScreenGeometry& screen);

/// Where the segments a-b and c-d meet; NaN where they do not.
[[nodiscard]] Point2 referenceMeeting(const Point2& a, const Point2& b, const Point2& c, const Point2& d);

/// The pieces of a line in UV that lie within a polygon.
[[nodiscard]] std::vector<UVLine> referenceClip(const UVLine& outline, const UVLine& line);

[[nodiscard]] Lines referenceGrid(const GridSources& sources, int density);

/// Samples of a line of constant v, without those that do not map.
[[nodiscard]] IScreenGeometry::GridSamples referenceRow(
    const std::function<bool(const Point2&, Point3&)>& mapInto3D, double v, double uStart, double uEnd,
    int count, int row);

}  // namespace quarn::test
