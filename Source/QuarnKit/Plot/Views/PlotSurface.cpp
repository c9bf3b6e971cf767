#include "PlotSurface.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

// Enough for a full circle to look round, and multiples of kGridIntervals.
constexpr int kColumns = 72;
constexpr int kRows = 16;
// Chords that approximate the length of an edge. A full circle is too short by 2e-5.
constexpr int kLengthSteps = 288;
// Positions closer than this, in sizes of the surface, are drawn as one.
constexpr double kSamePlace = 1e-6;

// Number of times that the search for an extreme position halves its step, down to a millionth of
// the unit square. The error of the position is of the order of the step's square.
constexpr int kHalvings = 14;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Point<double, 3> positionAt(const IScreenGeometry& screen, double u, double v) {
    Point<double, 3> point(kNaN, kNaN, kNaN);
    if (!screen.mapInto3D(Point<double, 2>(u, v), point, true) || !isFinite(point)) return {kNaN, kNaN, kNaN};
    return point;
}

// Returns the length of the line from one UV to another. Chords that are not finite count as 0.
double lengthBetween(const IScreenGeometry& screen, const Point<double, 2>& from,
                     const Point<double, 2>& to) {
    double sum = 0.0;
    Point<double, 3> last = positionAt(screen, from[0], from[1]);
    for (int i = 1; i <= kLengthSteps; ++i) {
        const Point<double, 2> uv = from + (to - from) * (static_cast<double>(i) / kLengthSteps);
        const Point<double, 3> next = positionAt(screen, uv[0], uv[1]);
        const double step = length(next - last);
        if (std::isfinite(step)) sum += step;
        last = next;
    }
    return sum;
}

}  // namespace

PlotSurface::PlotSurface(const IScreenGeometry& screen) : columnCount(kColumns), rowCount(kRows) {
    takeSamples(screen);
    findBounds(screen);
    if (!isDrawable()) return;
    for (Point<double, 3>& position : samples) position = toScene(position);
    findEdges();
    lengths = {lengthBetween(screen, {0.0, 0.0}, {1.0, 0.0}), lengthBetween(screen, {1.0, 0.0}, {1.0, 1.0}),
               lengthBetween(screen, {0.0, 1.0}, {1.0, 1.0}), lengthBetween(screen, {0.0, 0.0}, {0.0, 1.0})};
    dropStraightSamples();
}

void PlotSurface::takeSamples(const IScreenGeometry& screen) {
    for (int row = 0; row <= kRows; ++row)
        for (int column = 0; column <= kColumns; ++column)
            samples.push_back(
                positionAt(screen, static_cast<double>(column) / kColumns, static_cast<double>(row) / kRows));
}

void PlotSurface::findBounds(const IScreenGeometry& screen) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto lowestAlong = findExtreme(screen, axis, -1.0);
        const auto highestAlong = findExtreme(screen, axis, 1.0);
        if (!lowestAlong || !highestAlong) return;
        lowest[axis] = *lowestAlong;
        highest[axis] = *highestAlong;
    }
    const Point<double, 3> extent = highest - lowest;
    const double longest = std::max({extent[0], extent[1], extent[2]});
    // Positions cannot be scaled to 1 if the size is below the smallest normal number.
    if (!isFinite(extent) || longest < std::numeric_limits<double>::min()) return;
    size = longest;
    center = lowest + extent * 0.5;
}

// Finds the extreme coordinate along one axis by hill climbing from the extreme sample.
std::optional<double> PlotSurface::findExtreme(const IScreenGeometry& screen, std::size_t axis,
                                               double direction) const {
    Point<double, 2> best;
    double reached = -std::numeric_limits<double>::infinity();
    const auto visit = [&](double u, double v) {
        const double coordinate = positionAt(screen, u, v)[axis] * direction;
        if (!(coordinate > reached)) return false;
        reached = coordinate;
        best = Point<double, 2>(u, v);
        return true;
    };
    for (int row = 0; row <= kRows; ++row)
        for (int column = 0; column <= kColumns; ++column)
            visit(static_cast<double>(column) / kColumns, static_cast<double>(row) / kRows);
    if (!std::isfinite(reached)) return std::nullopt;
    double step = 1.0 / kColumns;
    for (int i = 0; i < kHalvings; ++i) {
        visit(std::max(best[0] - step, 0.0), best[1]);
        visit(std::min(best[0] + step, 1.0), best[1]);
        visit(best[0], std::max(best[1] - step, 0.0));
        visit(best[0], std::min(best[1] + step, 1.0));
        step /= 2;
    }
    return reached * direction;
}

void PlotSurface::findEdges() {
    const auto isSame = [](const Point<double, 3>& a, const Point<double, 3>& b) {
        return length(a - b) < kSamePlace;
    };
    isClosed = true;
    isEdgePoint.fill(true);
    for (int row = 0; row <= kRows; ++row) {
        isClosed = isClosed && isSame(sample(0, row), sample(kColumns, row));
        isEdgePoint[Left] = isEdgePoint[Left] && isSame(sample(0, row), sample(0, 0));
        isEdgePoint[Right] = isEdgePoint[Right] && isSame(sample(kColumns, row), sample(kColumns, 0));
    }
    for (int column = 0; column <= kColumns; ++column) {
        isEdgePoint[Top] = isEdgePoint[Top] && isSame(sample(column, 0), sample(0, 0));
        isEdgePoint[Bottom] = isEdgePoint[Bottom] && isSame(sample(column, kRows), sample(0, kRows));
    }
}

// A straight direction needs only as many cells as the grid has intervals.
void PlotSurface::dropStraightSamples() {
    bool isStraightAlongU = true;
    bool isStraightAlongV = true;
    const auto isBetween = [](const Point<double, 3>& a, const Point<double, 3>& b, double t,
                              const Point<double, 3>& point) {
        return length(a + (b - a) * t - point) < kSamePlace;
    };
    for (int row = 0; row <= kRows; ++row) {
        for (int column = 0; column <= kColumns; ++column) {
            const Point<double, 3>& here = sample(column, row);
            isStraightAlongU = isStraightAlongU && isBetween(sample(0, row), sample(kColumns, row),
                                                             static_cast<double>(column) / kColumns, here);
            isStraightAlongV = isStraightAlongV && isBetween(sample(column, 0), sample(column, kRows),
                                                             static_cast<double>(row) / kRows, here);
        }
    }
    if (isStraightAlongU) columnCount = kGridIntervals;
    if (isStraightAlongV) rowCount = kGridIntervals;
}

const Point<double, 3>& PlotSurface::sample(int column, int row) const {
    return samples[static_cast<std::size_t>(row) * (kColumns + 1) + static_cast<std::size_t>(column)];
}

std::optional<Point<double, 3>> PlotSurface::at(int column, int row) const {
    const Point<double, 3>& position = sample(column * (kColumns / columnCount), row * (kRows / rowCount));
    if (!isFinite(position)) return std::nullopt;
    return position;
}

std::optional<StretchPatch> PlotSurface::patch(int column, int row) const {
    const auto a = at(column, row);
    const auto b = at(column + 1, row);
    const auto c = at(column + 1, row + 1);
    const auto d = at(column, row + 1);
    if (!a || !b || !c || !d) return std::nullopt;
    return StretchPatch{.area = length(cross(*c - *a, *d - *b)) / 2,
                        .uvArea = 1.0 / (static_cast<double>(columnCount) * rowCount)};
}

std::vector<StretchPatch> PlotSurface::patches() const {
    std::vector<StretchPatch> result;
    for (int row = 0; row < rowCount; ++row)
        for (int column = 0; column < columnCount; ++column)
            if (const auto one = patch(column, row)) result.push_back(*one);
    return result;
}

}  // namespace quarn
