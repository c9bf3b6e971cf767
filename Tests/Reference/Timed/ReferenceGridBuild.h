/// \file
/// The grid of a mesh written plainly: each sample is tested against all of the outline.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

#include "Reference/Timed/ReferencePolygonScan.h"
#include "Reference/Timed/ReferenceUVMapping.h"

namespace quarn::bench {

/// Keeps the grid last made. The indexes must outlive it.
class PlainGrid {
public:
    using Polylines = std::vector<std::vector<Point<double, 3>>>;

    explicit PlainGrid(const PlainIndexes& asked) : indexes(asked), mapping(asked) {}

    void sampleGrid(Polylines& grid, int density) {
        if (density != madeDensity) {
            madeDensity = density;
            made = calculate(density);
        }
        grid = made;
    }

private:
    using UV = Point<double, 2>;
    using Line = std::vector<UV>;

    static constexpr int kSamples = 30;
    static constexpr double kStep = 0.034482758620689655;

    static UV crossingOf(const UV& a, const UV& b, const UV& c, const UV& d) {
        const double dx = c[0] - d[0];
        const double dy = c[1] - d[1];
        const double t =
            ((c[0] - a[0]) * dy - (c[1] - a[1]) * dx) / (dy * (b[0] - a[0]) - dx * (b[1] - a[1]));
        const UV x = a + t * (b - a);
        const bool isABSteep = std::abs(a[1] - b[1]) > std::abs(a[0] - b[0]);
        const double onAB = isABSteep ? (x[1] - b[1]) / (a[1] - b[1]) : (x[0] - b[0]) / (a[0] - b[0]);
        const double onCD = std::abs(dy) > std::abs(dx) ? (x[1] - d[1]) / dy : (x[0] - d[0]) / dx;
        if (onAB >= 0.0 && onAB <= 1.0 && onCD >= 0.0 && onCD <= 1.0) return x;
        constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
        return {kNaN, kNaN};
    }

    void clip(const Line& line, std::vector<Line>& output) const {
        std::vector<Line> pieces(1);
        const Line outline = indexes.outline->boundary.uvPoints;
        bool wasInside = isWithin(outline, line.front());
        if (wasInside) pieces.back().push_back(line.front());
        for (std::size_t i = 1; i < line.size(); ++i) {
            const bool isInside = isWithin(outline, line[i]);
            if (isInside && wasInside) pieces.back().push_back(line[i]);
            if (isInside != wasInside) {
                for (std::size_t k = 0; k < outline.size(); ++k) {
                    const std::size_t next = k + 1 == outline.size() ? 0 : k + 1;
                    const UV crossing = crossingOf(outline[k], outline[next], line[i - 1], line[i]);
                    if (std::isnan(crossing[0])) continue;
                    if (isInside) pieces.emplace_back();
                    pieces.back().push_back(crossing);
                    if (isInside) pieces.back().push_back(line[i]);
                    break;
                }
            }
            wasInside = isInside;
        }
        for (Line& piece : pieces) output.push_back(std::move(piece));
    }

    void appendLifted(const std::vector<Line>& lines, Polylines& grid) {
        std::vector<Line> pieces;
        for (const Line& line : lines) clip(line, pieces);
        for (const Line& piece : pieces) {
            std::vector<Point<double, 3>>& lifted = grid.emplace_back();
            for (const UV& uv : piece) {
                Point<double, 3> point;
                if (mapping.mapInto3D(uv, point, true)) lifted.push_back(point);
            }
        }
    }

    Polylines calculate(int density) {
        Polylines grid(1, indexes.outline->boundary.points);
        if (!grid.front().empty()) grid.front().push_back(Point<double, 3>(grid.front().front()));
        const double step = 1.0 / (density - 1.0);
        std::vector<Line> constantV(static_cast<std::size_t>(density));
        std::vector<Line> constantU(static_cast<std::size_t>(density));
        for (int i = 0; i < density; ++i) {
            for (int j = 0; j < kSamples; ++j) {
                constantV[static_cast<std::size_t>(i)].push_back({j * kStep, i * step});
                constantU[static_cast<std::size_t>(i)].push_back({i * step, j * kStep});
            }
        }
        appendLifted(constantV, grid);
        appendLifted(constantU, grid);
        return grid;
    }

    const PlainIndexes& indexes;
    PlainMapping mapping;
    int madeDensity = 0;
    Polylines made;
};

}  // namespace quarn::bench
