/// \file
/// A screen as a lattice of positions, for drawing.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include <QuarnScreen/IScreenGeometry.h>

#include "PlotStretch.h"

namespace quarn {

/// Intervals of the drawn UV grid along u and along v.
inline constexpr int kGridIntervals = 8;

/// Samples of a screen of any type.
///
/// Positions are translated and scaled so that the surface's bounds are centered at the origin and
/// their longest side is 1. Positions that are not finite are omitted. Const operations are safe on
/// several threads.
class PlotSurface {
public:
    /// Edges of the unit square, in the order of edgeLengths().
    enum Edge { Top, Right, Bottom, Left };

    explicit PlotSurface(const IScreenGeometry& screen);

    /// Returns true if there is anything to draw.
    [[nodiscard]] bool isDrawable() const { return size > 0.0; }

    /// Return the number of cells along u and v, a multiple of kGridIntervals.
    [[nodiscard]] int columns() const { return columnCount; }
    [[nodiscard]] int rows() const { return rowCount; }
    /// Returns the position at a lattice point; nothing if the screen has none.
    [[nodiscard]] std::optional<Point<double, 3>> at(int column, int row) const;

    /// Returns true if the edges u = 0 and u = 1 are the same line.
    [[nodiscard]] bool closesAlongU() const { return isClosed; }
    /// Returns true if an edge is a single point, as at the top of a dome.
    [[nodiscard]] bool isPoint(Edge edge) const { return isEdgePoint.at(edge); }

    /// Return the corners of the surface's bounds, in the screen's unit and frame.
    [[nodiscard]] const Point<double, 3>& min() const { return lowest; }
    [[nodiscard]] const Point<double, 3>& max() const { return highest; }
    /// Returns the lengths of the edges, in the screen's unit.
    [[nodiscard]] const std::array<double, 4>& edgeLengths() const { return lengths; }

    /// Returns the longest side of the bounds, in the screen's unit. It is 1 in the results of
    /// at().
    [[nodiscard]] double longestSide() const { return size; }

    /// Returns the area of a cell, scaled as in at(), and its area in UV; nothing if a corner has
    /// no position.
    [[nodiscard]] std::optional<StretchPatch> patch(int column, int row) const;
    /// Returns the areas of all cells.
    [[nodiscard]] std::vector<StretchPatch> patches() const;

    /// Translates and scales a position of the screen's frame as in at().
    [[nodiscard]] Point<double, 3> toScene(const Point<double, 3>& point) const {
        return (point - center) / size;
    }

private:
    [[nodiscard]] const Point<double, 3>& sample(int column, int row) const;
    void takeSamples(const IScreenGeometry& screen);
    void findBounds(const IScreenGeometry& screen);
    [[nodiscard]] std::optional<double> findExtreme(const IScreenGeometry& screen, std::size_t axis,
                                                    double direction) const;
    void findEdges();
    void dropStraightSamples();

    std::vector<Point<double, 3>> samples;  // row by row at full resolution, NaN for none
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
