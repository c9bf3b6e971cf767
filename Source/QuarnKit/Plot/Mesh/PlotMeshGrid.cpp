#include "PlotMeshGrid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include <QuarnKit/Mesh/EdgeLoops.h>
#include <QuarnKit/Mesh/VertexIds.h>
#include <QuarnKit/Plot/Views/PlotSurface.h>

namespace quarn {

namespace {

using Ends = std::vector<std::pair<std::uint32_t, std::uint32_t>>;
using Line = std::vector<Point<double, 3>>;
using Lines = std::vector<Line>;

// Ends of lines are rounded to this fraction of the mesh's size, far less than a pixel, so that
// lines across a narrow gap between two triangles are joined.
constexpr double kPlaces = 8192.0;

Point<double, 3> rounded(const Point<double, 3>& point) {
    const auto nearest = [](double coordinate) { return std::round(coordinate * kPlaces) / kPlaces; };
    return {nearest(point[0]), nearest(point[1]), nearest(point[2])};
}

// Finds the lines of equal u, or of equal v.
class GridFinder {
public:
    GridFinder(std::size_t lineAxis, int lastGridLine) : axis(lineAxis), lastLine(lastGridLine) {}

    void add(const TriangleCorners& corners, const TriangleUVs& uvs) {
        const auto [min, max] = std::minmax({uvs[0][axis], uvs[1][axis], uvs[2][axis]});
        for (int line = 0; line <= lastLine; ++line)
            if (const double level = static_cast<double>(line) / kGridIntervals; min < level && level <= max)
                cut(corners, uvs, line);
    }
    [[nodiscard]] Lines lines() const {
        Lines result;
        for (const Ends& edges : edgesOfLine) {
            Lines next = buildEdgeLines(ids.points(), edges);
            std::move(next.begin(), next.end(), std::back_inserter(result));
        }
        return result;
    }

private:
    // A corner on the line counts as above it, so that a line along an edge is found once.
    void cut(const TriangleCorners& corners, const TriangleUVs& uvs, int line) {
        const double level = static_cast<double>(line) / kGridIntervals;
        std::array<std::uint32_t, 2> ends{};
        std::size_t count = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            std::size_t below = i;
            std::size_t above = (i + 1) % 3;
            if ((uvs.at(below)[axis] < level) == (uvs.at(above)[axis] < level)) continue;
            if (!(uvs.at(below)[axis] < level)) std::swap(below, above);
            const double from = uvs.at(below)[axis];
            const double fraction = (level - from) / (uvs.at(above)[axis] - from);
            const Point<double, 3> at =
                fraction < 1.0 ? corners.at(below) + (corners.at(above) - corners.at(below)) * fraction
                               : corners.at(above);
            ends.at(count++) = ids.idOf(rounded(at));
        }
        if (ends[0] != ends[1]) edgesOfLine.at(static_cast<std::size_t>(line)).emplace_back(ends[0], ends[1]);
    }

    std::size_t axis;
    int lastLine;
    VertexIds<3> ids;
    std::array<Ends, kGridIntervals + 1> edgesOfLine;
};

}  // namespace

double lineLength(const std::vector<Point<double, 3>>& line) {
    double sum = 0.0;
    for (std::size_t i = 1; i < line.size(); ++i) sum += length(line[i] - line[i - 1]);
    return sum;
}

Lines buildEdgeLines(const Line& positions, const Ends& edges) {
    std::vector<std::pair<double, Line>> lines;
    for (const EdgeLoop& path : buildEdgeLoops(edges)) {
        Line line;
        for (const std::uint32_t point : path.points) line.push_back(positions[point]);
        const double distance = lineLength(line);
        lines.emplace_back(distance, std::move(line));
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    Lines result;
    for (auto& [distance, line] : lines) result.push_back(std::move(line));
    return result;
}

Lines uvGridLines(const std::vector<TriangleCorners>& triangles, const std::vector<TriangleUVs>& uvs) {
    Lines result;
    for (const std::size_t axis : {std::size_t{0}, std::size_t{1}}) {
        // If the UVs end at 1, the boundary is drawn there.
        const bool extendsBeyond = std::any_of(uvs.begin(), uvs.end(), [&](const TriangleUVs& corners) {
            return std::any_of(corners.begin(), corners.end(),
                               [&](const auto& uv) { return uv[axis] > 1.0; });
        });
        GridFinder finder(axis, extendsBeyond ? kGridIntervals : kGridIntervals - 1);
        for (std::size_t i = 0; i < triangles.size(); ++i)
            if (uvs[i][0] != kNoUV) finder.add(triangles[i], uvs[i]);
        Lines lines = finder.lines();
        std::move(lines.begin(), lines.end(), std::back_inserter(result));
    }
    return result;
}

}  // namespace quarn
