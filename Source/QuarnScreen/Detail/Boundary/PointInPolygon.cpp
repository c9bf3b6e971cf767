#include "PointInPolygon.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

using UV = Point<double, 2>;

// A fraction of the screen's size in UV: far below a pixel, and far above the rounding error of a
// UV. Both literals are fixed; the second one is not computed from the first.
constexpr double kBoundaryTolerance = 1e-9;
constexpr double kBoundaryToleranceSquared = 1e-18;

double lowEnd(double a, double b) {
    return std::min(a, b) - kBoundaryTolerance;
}

double highEnd(double a, double b) {
    return std::max(a, b) + kBoundaryTolerance;
}

bool isWithinWidened(double x, double a, double b) {
    return x >= lowEnd(a, b) && x <= highEnd(a, b);
}

bool isOnSegment(const UV& from, const UV& to, const UV& point) {
    if (!isWithinWidened(point[0], from[0], to[0]) || !isWithinWidened(point[1], from[1], to[1]))
        return false;
    const UV along = to - from;
    const double lengthSquared = dot(along, along);
    double parameter = 0.0;
    if (lengthSquared != 0.0) {
        parameter = dot(point - from, along) / lengthSquared;
        if (parameter < 0.0) parameter = 0.0;
        if (parameter > 1.0) parameter = 1.0;
    }
    const UV offset = point - (from + parameter * along);
    return dot(offset, offset) <= kBoundaryToleranceSquared;
}

// Returns true if the segment crosses the horizontal line through the point, at a greater u than
// the point.
bool isCrossed(const UV& from, const UV& to, const UV& point) {
    if ((from[1] > point[1]) == (to[1] > point[1])) return false;
    const double u = (to[0] - from[0]) * (point[1] - from[1]) / (to[1] - from[1]) + from[0];
    return u > point[0];
}

bool hasFiniteV(const UV& point) {
    return std::isfinite(point[1]);
}

}  // namespace

namespace quarn::detail {

bool pointWithinPolygon(const std::vector<Point<double, 2>>& polygon, const Point<double, 2>& point) {
    if (polygon.empty()) return false;
    bool isInside = false;
    const UV* previous = &polygon.back();
    for (const UV& corner : polygon) {
        if (isCrossed(corner, *previous, point)) isInside = !isInside;
        if (isOnSegment(corner, *previous, point)) return true;
        previous = &corner;
    }
    return isInside;
}

PolygonBands::PolygonBands(const std::vector<Point<double, 2>>& polygon) : corners(polygon) {
    if (corners.empty() || !std::all_of(corners.begin(), corners.end(), hasFiniteV)) return;
    chooseBands();
    if (!bandStarts.empty()) listSegments();
}

bool PolygonBands::contains(const Point<double, 2>& point) const {
    if (bandStarts.empty()) return pointWithinPolygon(corners, point);
    // Negated, so that NaN counts as outside.
    if (!(point[1] >= whole.low && point[1] <= whole.high)) return false;
    bool isInside = false;
    const std::size_t band = bandOf(point[1]);
    for (std::size_t i = bandStarts[band]; i < bandStarts[band + 1]; ++i) {
        const UV& corner = corners[segments[i]];
        const UV& before = corners[previous(segments[i])];
        if (isCrossed(corner, before, point)) isInside = !isInside;
        if (isOnSegment(corner, before, point)) return true;
    }
    return isInside;
}

std::size_t PolygonBands::previous(std::size_t corner) const {
    return corner == 0 ? corners.size() - 1 : corner - 1;
}

// Returns the range of v that isOnSegment() accepts, to the last bit. It includes every v at which
// the segment can be crossed.
PolygonBands::Range PolygonBands::reachOf(std::size_t segment) const {
    const double a = corners[segment][1];
    const double b = corners[previous(segment)][1];
    return {lowEnd(a, b), highEnd(a, b)};
}

// Each operation is monotone, including its rounding. The band of a v within a segment's reach is
// therefore between the bands of the ends of that reach.
std::size_t PolygonBands::bandOf(double v) const {
    const auto band = static_cast<std::size_t>((v - whole.low) * bandsPerV);
    return std::min(band, bandStarts.size() - 2);
}

void PolygonBands::chooseBands() {
    // A segment is listed in each band that it overlaps. This is the mean number of entries per
    // segment that its height causes. A closed polygon is at least twice as long as high, so there
    // are at most half as many bands as such entries.
    constexpr double kListingsForHeight = 4.0;

    whole = reachOf(0);
    double sumOfHeights = 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Range reach = reachOf(i);
        whole = {std::min(whole.low, reach.low), std::max(whole.high, reach.high)};
        sumOfHeights += reach.high - reach.low;
    }
    const double height = whole.high - whole.low;
    if (!std::isfinite(height)) return;

    // Use one band if the polygon has no height, or if the sum is not finite.
    const double wanted = kListingsForHeight * static_cast<double>(corners.size()) * (height / sumOfHeights);
    const std::size_t bands = wanted > 1.0 ? static_cast<std::size_t>(wanted) : 1;
    if (bands > 1) bandsPerV = static_cast<double>(bands) / height;
    bandStarts.resize(bands + 1);
}

void PolygonBands::listSegments() {
    // Count the segments of each band.
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Range reach = reachOf(i);
        const std::size_t last = bandOf(reach.high);
        for (std::size_t band = bandOf(reach.low); band <= last; ++band) ++bandStarts[band];
    }

    // Set each start to the end of its band, and decrement it with each inserted segment.
    std::partial_sum(bandStarts.begin(), bandStarts.end(), bandStarts.begin());
    segments.resize(bandStarts.back());
    for (std::size_t i = corners.size(); i-- > 0;) {
        const Range reach = reachOf(i);
        const std::size_t last = bandOf(reach.high);
        for (std::size_t band = bandOf(reach.low); band <= last; ++band)
            segments[--bandStarts[band]] = static_cast<std::uint32_t>(i);
    }
}

}  // namespace quarn::detail
