#include "EarClipping.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QuarnKit/Base/IsFinite.h>

#include "DegenerateTriangles.h"

namespace quarn {

namespace {

using Position = Point<double, 3>;
using PlanePoint = Point<double, 2>;

// Returns twice the area vector of a polygon. Its direction is the mean normal.
Position areaVectorOf(std::span<const Position> corners) {
    Position sum;
    for (std::size_t i = 1; i + 1 < corners.size(); ++i)
        sum = sum + cross(corners[i] - corners[0], corners[i + 1] - corners[0]);
    return sum;
}

double largestCoordinateOf(std::span<const Position> corners) {
    double largest = 0.0;
    for (const Position& corner : corners)
        for (std::size_t i = 0; i < 3; ++i) largest = std::max(largest, std::abs(corner[i]));
    return largest;
}

// Returns a unit vector across a unit vector.
Position perpendicularTo(const Position& normal) {
    std::size_t smallest = 0;
    for (std::size_t i = 1; i < 3; ++i)
        if (std::abs(normal[i]) < std::abs(normal[smallest])) smallest = i;
    Position axis;
    axis[smallest] = 1.0;
    const Position across = cross(axis, normal);
    return across / length(across);
}

// Projects a polygon to its plane, in which it is counterclockwise.
std::vector<PlanePoint> project(std::span<const Position> corners, const Position& normal) {
    const Position right = perpendicularTo(normal);
    const Position up = cross(normal, right);
    std::vector<PlanePoint> points;
    points.reserve(corners.size());
    for (const Position& corner : corners) {
        const Position offset = corner - corners[0];
        points.emplace_back(dot(offset, right), dot(offset, up));
    }
    return points;
}

// Returns twice the area of a triangle, positive if its corners are counterclockwise.
double doubleArea(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

double longestEdge(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    return std::max({length(b - a), length(c - b), length(a - c)});
}

// What an ear may contain. Each step is taken if the one before finds no ear.
enum class EarRule {
    Empty,     // no other corner inside or on its edges
    Touching,  // no other corner inside
    Flat       // as Touching, or zero area
};

class EarClipper {
public:
    EarClipper(std::span<const Position> corners, const Position& normal)
        : points(project(corners, normal)),
          minHeight(kMinHeightRatio * largestCoordinateOf(corners)),
          quality(corners.size()) {
        for (std::uint32_t i = 0; i < corners.size(); ++i) rest.push_back(i);
        for (std::size_t i = 1; i + 1 < points.size(); ++i)
            restArea += doubleArea(points[0], points[i], points[i + 1]);
    }

    std::vector<PolygonTriangle> clip();

private:
    static constexpr double kNoEar = -1.0;

    [[nodiscard]] PolygonTriangle earAt(std::size_t place) const {
        const std::size_t last = rest.size() - 1;
        return {rest[place == 0 ? last : place - 1], rest[place], rest[place == last ? 0 : place + 1]};
    }
    [[nodiscard]] double areaOf(const PolygonTriangle& ear) const {
        return doubleArea(points[ear[0]], points[ear[1]], points[ear[2]]);
    }
    // Areas below it are rounding of the positions.
    [[nodiscard]] double minAreaOf(const PolygonTriangle& ear) const {
        return minHeight * longestEdge(points[ear[0]], points[ear[1]], points[ear[2]]);
    }
    [[nodiscard]] bool isBlocked(const PolygonTriangle& ear) const;
    [[nodiscard]] double qualityOf(const PolygonTriangle& ear) const;
    void assessAll();
    void cut(std::size_t place);

    std::vector<PlanePoint> points;
    double minHeight;
    std::vector<std::uint32_t> rest;  // the corners that are left, in their order
    std::vector<double> quality;      // of the ear at each of them; kNoEar for none
    double restArea = 0.0;            // twice
    EarRule rule = EarRule::Empty;
    std::vector<PolygonTriangle> triangles;
};

// Corners at the position of one of the ear's are the other side of a bridge.
bool EarClipper::isBlocked(const PolygonTriangle& ear) const {
    const PlanePoint& a = points[ear[0]];
    const PlanePoint& b = points[ear[1]];
    const PlanePoint& c = points[ear[2]];
    const bool isEmpty = rule == EarRule::Empty;
    const double minInside = isEmpty ? 0.0 : std::numeric_limits<double>::min();
    // A corner that rounding put next to the cut is on it.
    const double minBeforeCut = isEmpty ? -minHeight * length(a - c) : minInside;
    return std::any_of(rest.begin(), rest.end(), [&](std::uint32_t corner) {
        const PlanePoint& p = points[corner];
        return doubleArea(a, b, p) >= minInside && doubleArea(b, c, p) >= minInside &&
               doubleArea(c, a, p) >= minBeforeCut && p != a && p != b && p != c;
    });
}

// Returns the height of an ear relative to its longest edge.
double EarClipper::qualityOf(const PolygonTriangle& ear) const {
    const double area = areaOf(ear);
    const double minArea = minAreaOf(ear);
    if (rule == EarRule::Flat && std::abs(area) <= minArea) return 0.0;
    // The last triangle has to get an area too.
    const double areaLeft = restArea - area;
    const bool leavesArea = rule == EarRule::Empty ? areaLeft > minArea : areaLeft >= -minArea;
    if (!(area > 0.0) || !leavesArea || isBlocked(ear)) return kNoEar;
    const double longest = longestEdge(points[ear[0]], points[ear[1]], points[ear[2]]);
    return area / (longest * longest);
}

void EarClipper::assessAll() {
    for (std::size_t place = 0; place < rest.size(); ++place) quality[place] = qualityOf(earAt(place));
}

void EarClipper::cut(std::size_t place) {
    const PolygonTriangle ear = earAt(place);
    triangles.push_back(ear);
    restArea -= areaOf(ear);
    rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(place));
    quality.erase(quality.begin() + static_cast<std::ptrdiff_t>(place));
    const std::size_t next = place == rest.size() ? 0 : place;
    const std::size_t previous = next == 0 ? rest.size() - 1 : next - 1;
    for (const std::size_t changed : {previous, next}) quality[changed] = qualityOf(earAt(changed));
}

std::vector<PolygonTriangle> EarClipper::clip() {
    // An ear that a corner blocked is assessed again, since that corner may have been cut off.
    constexpr std::array kRules = {EarRule::Empty, EarRule::Empty, EarRule::Touching, EarRule::Flat};
    for (const EarRule next : kRules) {
        rule = next;
        assessAll();
        while (rest.size() > 3) {
            const auto best = std::max_element(quality.begin(), quality.end());
            if (*best == kNoEar) break;
            cut(static_cast<std::size_t>(best - quality.begin()));
        }
    }
    const PolygonTriangle last = earAt(1);
    if (rest.size() > 3 || areaOf(last) < -minAreaOf(last)) return {};
    triangles.push_back(last);
    return std::move(triangles);
}

}  // namespace

bool isFanFolded(std::span<const Point<double, 3>> corners) {
    if (corners.size() < 4) return false;
    const Position normal = areaVectorOf(corners);
    if (!isFinite(normal)) return false;
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        const std::array triangle{corners[0], corners[i], corners[i + 1]};
        const Position across = cross(triangle[1] - triangle[0], triangle[2] - triangle[0]);
        // Not positive, since the normal of a polygon that crosses itself may be zero.
        if (!(dot(across, normal) > 0.0) && !isDegenerateTriangle<3>(triangle)) return true;
    }
    return false;
}

std::vector<PolygonTriangle> clipEars(std::span<const Point<double, 3>> corners) {
    if (corners.size() < 3 || corners.size() > kMaxClippedCorners) return {};
    const Position areaVector = areaVectorOf(corners);
    const double size = length(areaVector);
    if (!(size > 0.0) || !std::isfinite(size)) return {};
    return EarClipper(corners, areaVector / size).clip();
}

}  // namespace quarn
