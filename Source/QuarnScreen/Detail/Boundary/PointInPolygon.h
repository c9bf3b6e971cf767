/// \file
/// Point-in-polygon queries in UV.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Returns true if a point is inside of a closed polygon in UV by the even-odd rule, or within 1e-9
/// of its edges. O(n).
///
/// The last point of the polygon is connected to the first. A corner is above a point only if its v
/// is strictly greater. A point with exactly the v of a corner therefore meets the two edges there
/// as one. False for an empty polygon.
[[nodiscard]] bool pointWithinPolygon(const std::vector<Point<double, 2>>& polygon,
                                      const Point<double, 2>& point);

/// A polygon that is prepared for many queries. The results are exactly those of
/// pointWithinPolygon().
///
/// The polygon's range of v is divided into bands. Each band lists the segments that can affect a
/// point in it. The result does not depend on the order of segments: either the point is on a
/// segment, or the number of crossings decides. A polygon of n points has at most about 2 n bands
/// with about 5 n entries in all, so a query checks a few segments on average. A query costs more
/// if the polygon runs along v = const: all of that run is in one band.
///
/// If a v of the polygon or the range of v is not finite, a query checks all segments.
///
/// Thread-safety: any number of threads may query at once.
class PolygonBands {
public:
    /// Creates an empty polygon.
    PolygonBands() = default;
    /// Copies the polygon and builds its bands. O(n).
    explicit PolygonBands(const std::vector<Point<double, 2>>& polygon);

    /// Returns pointWithinPolygon() of the polygon and the point.
    [[nodiscard]] bool contains(const Point<double, 2>& point) const;

private:
    // A closed interval of v.
    struct Range {
        double low = 0.0;
        double high = 0.0;
    };

    [[nodiscard]] std::size_t previous(std::size_t corner) const;
    [[nodiscard]] Range reachOf(std::size_t segment) const;
    [[nodiscard]] std::size_t bandOf(double v) const;
    void chooseBands();
    void listSegments();

    std::vector<Point<double, 2>> corners;  // segment i connects corner i to the one before it
    Range whole;                            // of all segments that a point can be on
    double bandsPerV = 0.0;
    // Start of each band in `segments`, then the end of the last band; empty without bands.
    std::vector<std::size_t> bandStarts;
    std::vector<std::uint32_t> segments;
};

}  // namespace quarn::detail
