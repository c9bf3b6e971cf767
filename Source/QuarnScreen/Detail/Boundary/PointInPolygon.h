/// \file
/// Whether a UV point lies within an polygon.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Whether a point lies within a closed polygon in UV, by the even-odd rule, or on it, within 1e-9.
///
/// The last point of the polygon is joined to the first. A corner is above a point only if its v is strictly
/// greater, so a point at the very height of a corner meets the two edges there as one. False for an empty
/// polygon. The cost is linear in the number of points.
[[nodiscard]] bool pointWithinPolygon(const std::vector<Point<double, 2>>& polygon,
                                      const Point<double, 2>& point);

/// An polygon that is asked many times: gives the answers of pointWithinPolygon(), each of them exactly.
///
/// The polygon's range of v is cut into bands, and each band lists the segments that can matter to a point in
/// it. The answer does not depend on the order of the segments: the point is on one of them, or the number of
/// crossings decides. An polygon of n points makes at most about 2 n bands, which list about 5 n segments in
/// all; so a question costs a few segments on average. It costs more where the polygon runs along v = const:
/// all of that run lies in one band.
///
/// All segments are asked if some v of the polygon is not finite, or the range of them is not.
///
/// Thread-safety: any number of threads may ask at once.
class PolygonBands {
public:
    /// Holds no point.
    PolygonBands() = default;
    /// Copies the polygon. The cost is linear in the number of points.
    explicit PolygonBands(const std::vector<Point<double, 2>>& polygon);

    /// What pointWithinPolygon() says of the polygon and the point.
    [[nodiscard]] bool contains(const Point<double, 2>& point) const;

private:
    // Some interval of v, both ends included.
    struct Range {
        double low = 0.0;
        double high = 0.0;
    };

    [[nodiscard]] std::size_t previous(std::size_t corner) const;
    [[nodiscard]] Range reachOf(std::size_t segment) const;
    [[nodiscard]] std::size_t bandOf(double v) const;
    void chooseBands();
    void listSegments();

    std::vector<Point<double, 2>> corners;  // segment i runs from corner i to the one before it
    Range whole;                            // of all segments that a point can be on
    double bandsPerV = 0.0;
    std::vector<std::size_t>
        bandStarts;  // start of each band in `segments`, and the end of the last; or empty
    std::vector<std::uint32_t> segments;
};

}  // namespace quarn::detail
