/// \file
/// A view of a mesh as a raster of triangle numbers.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include <QuarnKit/Mesh/TriangleCorners.h>
#include <QuarnKit/Plot/Views/PlotViews.h>

#include "TriangleCells.h"

namespace quarn {

/// A view of triangles in square cells, row by row from the bottom. Each cell has the number and
/// the depth of the nearest triangle at its center.
///
/// The time is bounded by the number of triangles and cells, however often the triangles overlap:
/// triangles behind what is drawn are skipped, as a whole or by tiles. If that is not enough, the
/// nearest ones are drawn, and the others are counted in leftOutCount().
class PlotRaster {
public:
    /// \param cells number of cells along the longer side of the view
    PlotRaster(const std::vector<TriangleCorners>& triangles, const Camera& viewCamera, int cells);

    [[nodiscard]] int columns() const { return columnCount; }
    [[nodiscard]] int rows() const { return rowCount; }
    [[nodiscard]] double cellSize() const { return cell; }
    /// Returns the nearest triangle at the center of a cell; nothing if there is none.
    [[nodiscard]] std::optional<std::uint32_t> triangleAt(int column, int row) const;
    /// Returns the position of a corner of cells, or between corners.
    [[nodiscard]] ViewPoint at(const ViewPoint& cells) const { return lowest + cells * cell; }
    /// Returns the number of triangles that are not drawn because the limit of time was reached.
    [[nodiscard]] std::size_t leftOutCount() const { return leftOut; }

    /// Returns true if triangles hide a position from the camera. The position may be on a
    /// triangle.
    [[nodiscard]] bool hides(const Point<double, 3>& position) const;

private:
    using Corners = TriangleCells::Corners;

    // A square of cells, or all of them.
    struct Tile {
        double depth = -std::numeric_limits<double>::infinity();  // at most that of its farthest part
        std::uint32_t visits = 0;                                 // of its parts since the depth was computed
    };

    [[nodiscard]] std::optional<Corners> project(const TriangleCorners& triangle) const;
    [[nodiscard]] Corners inCells(const Corners& seen) const;
    void drawAll(const std::vector<TriangleCorners>& triangles);
    [[nodiscard]] double maxVisits(const std::vector<TriangleCorners>& triangles) const;
    void draw(const TriangleCorners& triangle, std::uint32_t number);
    [[nodiscard]] std::size_t indexOf(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columnCount) +
               static_cast<std::size_t>(column);
    }
    [[nodiscard]] std::size_t tileOf(int tileColumn, int tileRow) const {
        return static_cast<std::size_t>(tileRow) * static_cast<std::size_t>(tileColumns) +
               static_cast<std::size_t>(tileColumn);
    }
    void drawTile(const TriangleCells& cells, const std::array<double, 3>& depth, std::uint32_t number,
                  int tileColumn, int tileRow);
    void updateTile(int tileColumn, int tileRow);
    void updateDepth();

    Camera camera;
    ViewPoint lowest;
    double cell = 0.0;
    int columnCount = 0;
    int rowCount = 0;
    int tileColumns = 0;
    std::vector<std::uint32_t> nearest;
    std::vector<double> depths;
    std::vector<Tile> tiles;
    Tile whole;                // of all tiles, with the visits of tiles
    std::uint64_t visits = 0;  // of cells and tiles
    std::size_t leftOut = 0;
};

}  // namespace quarn
