/// \file
/// A screen as a lattice of positions, to draw it.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include <QuarnScreen/IScreenGeometry.h>

#include "PlotStretch.h"

namespace quarn {

/// Lines of the drawn UV grid: one at each eighth of u and v.
inline constexpr int kGridIntervals = 8;

/// What a screen looks like, asked through its contract alone.
///
/// Positions are moved and scaled so that the surface's bounds are centred on the origin and their longest
/// side is 1; that holds for screens of any size and place. What is not finite is left out. Safe on several
/// threads once made.
class PlotSurface {
public:
    /// Edges of the unit square, in the order of edgeLengths().
    enum Edge { Top, Right, Bottom, Left };

    explicit PlotSurface(const IScreenGeometry& screen);

    /// Whether there is anything to draw.
    [[nodiscard]] bool isDrawable() const { return size > 0.0; }

    /// Counts of cells along u and v; multiples of kGridIntervals, or enough for a straight direction.
    [[nodiscard]] int columns() const { return columnCount; }
    [[nodiscard]] int rows() const { return rowCount; }
    /// Position at a lattice point, nothing where the screen has none.
    [[nodiscard]] std::optional<Point<double, 3>> at(int column, int row) const;

    /// Whether the edges u = 0 and u = 1 are the same line.
    [[nodiscard]] bool closesAlongU() const { return isClosed; }
    /// Whether all of an edge is one point, as at the top of a dome.
    [[nodiscard]] bool isPoint(Edge edge) const { return isEdgePoint.at(edge); }

    /// Corners of the surface's bounds, in the screen's unit and frame.
    [[nodiscard]] const Point<double, 3>& min() const { return lowest; }
    [[nodiscard]] const Point<double, 3>& max() const { return highest; }
    /// Lengths along the edges, in the screen's unit.
    [[nodiscard]] const std::array<double, 4>& edgeLengths() const { return lengths; }

    /// Longest side of the bounds, which at() takes for 1.
    [[nodiscard]] double longestSide() const { return size; }

    /// A cell's area, as at() would tell it, with its area in UV; nothing where a corner has no position.
    [[nodiscard]] std::optional<StretchPatch> patch(int column, int row) const;
    /// Those of all cells.
    [[nodiscard]] std::vector<StretchPatch> patches() const;

    /// A position of the screen's frame as at() would tell it.
    [[nodiscard]] Point<double, 3> toScene(const Point<double, 3>& point) const {
        return (point - center) / size;
    }

private:
    [[nodiscard]] const Point<double, 3>& sample(int column, int row) const;
    void takeSamples(const IScreenGeometry& screen);
    void findBounds(const IScreenGeometry& screen);
    [[nodiscard]] std::optional<double> furthest(const IScreenGeometry& screen, std::size_t axis,
                                                 double direction) const;
    void findEdges();
    void dropStraightSamples();

    std::vector<Point<double, 3>> samples;  // row by row at full resolution, NaN where there is none
    Point<double, 3> lowest;
    Point<double, 3> highest;
    Point<double, 3> center;
    double size = 0.0;
    int columnCount = 0;
    int rowCount = 0;
    bool isClosed = false;
    std::array<bool, 4> isEdgePoint{};
    std::array<double, 4> lengths{};
};

}  // namespace quarn
