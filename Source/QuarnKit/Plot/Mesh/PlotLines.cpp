#include "PlotLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quarn {

namespace {

// In cells of the raster.
constexpr double kSampleDistance = 1.5;
constexpr double kTolerance = 0.25;

// A line that continues farther away than this has crossed the edge of a view all around the
// camera, in radians.
constexpr double kMaxJump = 3.0;

double distanceToSegment(const ViewPoint& point, const ViewPoint& from, const ViewPoint& to) {
    const ViewPoint along = to - from;
    const double square = dot(along, along);
    const double part = square > 0.0 ? std::clamp(dot(point - from, along) / square, 0.0, 1.0) : 0.0;
    return length(point - (from + along * part));
}

std::vector<LinePart> simplifiedParts(std::vector<LinePart> parts, const PlotRaster& raster) {
    for (LinePart& part : parts) part.points = simplifyLine(part.points, raster.cellSize() * kTolerance);
    return parts;
}

}  // namespace

std::vector<ViewPoint> simplifyLine(const std::vector<ViewPoint>& line, double tolerance) {
    if (line.size() < 3) return line;
    std::vector<bool> isKept(line.size());
    isKept.front() = isKept.back() = true;
    // Ranges between two kept points; each is split at its farthest point (Ramer-Douglas-Peucker).
    std::vector<std::pair<std::size_t, std::size_t>> parts = {{0, line.size() - 1}};
    while (!parts.empty()) {
        const auto [from, to] = parts.back();
        parts.pop_back();
        double farthest = tolerance;
        std::size_t cut = from;
        for (std::size_t i = from + 1; i < to; ++i) {
            const double distance = distanceToSegment(line[i], line[from], line[to]);
            if (!(distance > farthest)) continue;
            farthest = distance;
            cut = i;
        }
        if (cut == from) continue;
        isKept[cut] = true;
        parts.insert(parts.end(), {{from, cut}, {cut, to}});
    }
    std::vector<ViewPoint> result;
    for (std::size_t i = 0; i < line.size(); ++i)
        if (isKept[i]) result.push_back(line[i]);
    return result;
}

std::vector<LinePart> visibleParts(const std::vector<Point<double, 3>>& line, const Camera& camera,
                                   const PlotRaster& raster, SampleBudget& budget) {
    std::vector<LinePart> parts;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const Point<double, 3> step = line[i] - line[i - 1];
        const double seen = length(camera.project(line[i]) - camera.project(line[i - 1]));
        const int samples =
            std::max(static_cast<int>(std::ceil(seen / (raster.cellSize() * kSampleDistance))), 1);
        const auto at = [&](double sample) { return line[i - 1] + step * (sample / samples); };
        for (int sample = 0; sample < samples; ++sample) {
            if (budget.left == 0) return simplifiedParts(std::move(parts), raster);
            --budget.left;
            const std::array ends = {at(sample), at(sample + 1.0)};
            std::array<ViewPoint, 2> seenEnds;
            if (!camera.projectShape(ends, seenEnds)) continue;
            const bool isHidden = raster.hides(at(sample + 0.5));
            if (parts.empty() || parts.back().isHidden != isHidden ||
                length(parts.back().points.back() - seenEnds[0]) > kMaxJump)
                parts.push_back({.points = {seenEnds[0]}, .isHidden = isHidden});
            parts.back().points.push_back(seenEnds[1]);
        }
    }
    return simplifiedParts(std::move(parts), raster);
}

}  // namespace quarn
