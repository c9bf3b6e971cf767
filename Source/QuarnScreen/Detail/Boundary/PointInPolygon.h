/// \file
/// Whether a UV point lies within an outline.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

/// Whether a point lies within a closed polygon in UV, by the even-odd rule, or on it, within 1e-9.
///
/// The last point of the outline is joined to the first. A corner is above a point only if its v is strictly
/// greater, so a point at the very height of a corner meets the two edges there as one. False for an empty
/// outline. The cost is linear in the number of points.
[[nodiscard]] bool pointWithinOutline(const std::vector<Point<double, 2>>& outline,
                                      const Point<double, 2>& point);

/// An outline that is asked many times: gives the answers of pointWithinOutline(), each of them exactly.
///
/// The outline's range of v is cut into bands, and each band lists the segments that can matter to a point in
/// it. The answer does not depend on the order of the segments: the point is on one of them, or the number of
/// crossings decides. An outline of n points makes at most about 2 n bands, which list about 5 n segments in
/// all; so a question costs a few segments on average. It costs more where the outline runs along v = const:
/// all of that run lies in one band.
///
/// All segments are asked if some v of the outline is not finite, or the range of them is not.
///
/// Thread-safety: any number of threads may ask at once.
class OutlineBands {
public:
    /// Holds no point.
    OutlineBands() = default;
    /// Copies the outline. The cost is linear in the number of points.
    explicit OutlineBands(const std::vector<Point<double, 2>>& outline);

    /// What pointWithinOutline() says of the outline and the point.
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

}  // namespace quarn
