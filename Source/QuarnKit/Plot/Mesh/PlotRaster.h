/// \file
/// A view of a mesh as a raster of triangle numbers.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QuarnKit/Mesh/TriangleCorners.h>
#include <QuarnKit/Plot/Views/PlotViews.h>

namespace quarn {

/// A view of triangles in square cells, row by row from the bottom. Each cell has the number and
/// the depth of the nearest triangle at its center.
class PlotRaster {
public:
    /// \param cells number of cells along the longer side of the view
    PlotRaster(const std::vector<TriangleCorners>& triangles, const Camera& viewCamera, int cells);

    [[nodiscard]] int columns() const { return columnCount; }
    [[nodiscard]] int rows() const { return rowCount; }
    [[nodiscard]] double cellSize() const { return cell; }
    /// Returns the nearest triangle at the center of a cell; nothing if there is none.
    [[nodiscard]] std::optional<std::uint32_t> triangleAt(int column, int row) const;
    /// Returns the lower left corner of a cell.
    [[nodiscard]] ViewPoint cornerAt(int column, int row) const {
        return lowest + ViewPoint(column * cell, row * cell);
    }

    /// Returns true if triangles hide a position from the camera. The position may be on a
    /// triangle.
    [[nodiscard]] bool hides(const Point<double, 3>& position) const;

private:
    void draw(const TriangleCorners& triangle, std::uint32_t number);
    [[nodiscard]] std::size_t indexOf(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columnCount) +
               static_cast<std::size_t>(column);
    }

    Camera camera;
    ViewPoint lowest;
    double cell = 0.0;
    int columnCount = 0;
    int rowCount = 0;
    std::vector<std::uint32_t> nearest;
    std::vector<double> depths;
};

/// Covers the cells of a raster with rectangles. Adjacent cells of one class share a rectangle, and
/// the rectangles of one class are consecutive.
/// \param classOf returns the class of a cell; empty for none
/// \param cornerAt returns the lower left corner of a cell
[[nodiscard]] std::vector<Shape> cellAreas(int columns, int rows,
                                           const std::function<std::string(int, int)>& classOf,
                                           const std::function<ViewPoint(int, int)>& cornerAt);

}  // namespace quarn
