#include "Reference/Mesh/ReferenceGrid.h"

#include <cmath>
#include <cstddef>
#include <limits>

#include "Reference/Mesh/ReferencePointInPolygon.h"

namespace quarn::test {
namespace {

constexpr int kSamples = 30;
constexpr double kSpacing = 0.034482758620689655;

std::vector<UVLine> referenceClipAll(const GridSources& sources, const std::vector<UVLine>& lines) {
    std::vector<UVLine> pieces;
    for (const UVLine& line : lines) {
        UVLine outline;
        sources.sampleBoundaryUV(outline);
        for (const UVLine& piece : referenceClip(outline, line)) pieces.push_back(piece);
    }
    return pieces;
}

}  // namespace

GridSources sourcesOf(const IScreenGeometry& screen) {
    return {[&screen](Lines& lines) { screen.sampleBoundary(lines); },
            [&screen](UVLine& outline) { screen.sampleBoundaryUV(outline); },
            [&screen](const Point2& uv, Point3& point) { return screen.mapInto3D(uv, point, true); }};
}

Point2 referenceMeeting(const Point2& a, const Point2& b, const Point2& c, const Point2& d) {
    const double dx = c[0] - d[0];
    const double dy = c[1] - d[1];
    const double t = ((c[0] - a[0]) * dy - (c[1] - a[1]) * dx) / (dy * (b[0] - a[0]) - dx * (b[1] - a[1]));
    const double x = a[0] + t * (b[0] - a[0]);
    const double y = a[1] + t * (b[1] - a[1]);
    double onFirst = 0.0;
    if (std::fabs(a[1] - b[1]) > std::fabs(a[0] - b[0]))
        onFirst = (y - b[1]) / (a[1] - b[1]);
    else
        onFirst = (x - b[0]) / (a[0] - b[0]);
    double onSecond = 0.0;
    if (std::fabs(dy) > std::fabs(dx))
        onSecond = (y - d[1]) / dy;
    else
        onSecond = (x - d[0]) / dx;
    if (onFirst >= 0.0 && onFirst <= 1.0 && onSecond >= 0.0 && onSecond <= 1.0) return {x, y};
    const double nan = std::numeric_limits<double>::quiet_NaN();
    return {nan, nan};
}

std::vector<UVLine> referenceClip(const UVLine& outline, const UVLine& line) {
    std::vector<UVLine> pieces(1);
    bool inside = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool now = referencePointInPolygon(outline, line[i][0], line[i][1]);
        if (i == 0) {
            if (now) pieces.back().push_back(line[i]);
            inside = now;
            continue;
        }
        if (now && inside) pieces.back().push_back(line[i]);
        for (std::size_t k = 0; now != inside && k < outline.size(); ++k) {
            const Point2 x = referenceMeeting(outline[k], outline[k + 1 == outline.size() ? 0 : k + 1],
                                              line[i - 1], line[i]);
            if (std::isnan(x[0])) continue;
            if (now)
                pieces.push_back({x, line[i]});
            else
                pieces.back().push_back(x);
            break;
        }
        inside = now;
    }
    return pieces;
}

Lines referenceGrid(const GridSources& sources, int density) {
    Lines boundary;
    sources.sampleBoundary(boundary);
    Lines grid(1);
    for (const auto& line : boundary)
        for (const Point3& point : line) grid[0].push_back(point);
    if (!grid[0].empty()) {
        const Point3 first = grid[0][0];
        grid[0].push_back(first);
    }

    const double step = 1.0 / (static_cast<double>(density) - 1.0);
    std::vector<UVLine> constantV;
    std::vector<UVLine> constantU;
    for (int i = 0; i < density; ++i) {
        constantV.emplace_back();
        constantU.emplace_back();
        for (int j = 0; j < kSamples; ++j) {
            const double t = i * step;
            const double s = j * kSpacing;
            constantV.back().emplace_back(s, t);
            constantU.back().emplace_back(t, s);
        }
    }
    std::vector<UVLine> pieces = referenceClipAll(sources, constantV);
    for (const UVLine& piece : referenceClipAll(sources, constantU)) pieces.push_back(piece);
    for (const UVLine& piece : pieces) {
        grid.emplace_back();
        for (const Point2& uv : piece) {
            Point3 point;
            if (sources.mapInto3D(uv, point)) grid.back().push_back(point);
        }
    }
    return grid;
}

IScreenGeometry::GridSamples referenceRow(const std::function<bool(const Point2&, Point3&)>& mapInto3D,
                                          double v, double uStart, double uEnd, int count, int row) {
    IScreenGeometry::GridSamples samples;
    for (int i = 0; i < count; ++i) {
        const double quotient = static_cast<double>(i) / (static_cast<double>(count) - 1.0);
        Point3 point;
        if (mapInto3D({quotient * (uEnd - uStart) + uStart, v}, point)) samples[{i, row}] = point;
    }
    return samples;
}

}  // namespace quarn::test
