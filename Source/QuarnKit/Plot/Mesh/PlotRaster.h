/// \file
/// Which triangle of a mesh a view shows where.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QuarnKit/Mesh/TriangleCorners.h>
#include <QuarnKit/Plot/Views/PlotViews.h>

namespace quarn {

/// A view of triangles in small square cells, row by row from below, each with the nearest triangle at its middle.
class PlotRaster {
public:
    /// \param cells how many of them the longer side of the view has
    PlotRaster(const std::vector<TriangleCorners>& triangles, const Camera& viewCamera, int cells);

    [[nodiscard]] int columns() const { return columnCount; }
    [[nodiscard]] int rows() const { return rowCount; }
    [[nodiscard]] double cellSize() const { return cell; }
    [[nodiscard]] std::optional<std::uint32_t> triangleAt(int column, int row) const;
    /// A corner of the cells.
    [[nodiscard]] ViewPoint cornerAt(int column, int row) const {
        return lowest + ViewPoint(column * cell, row * cell);
    }

    /// Whether triangles stand between the camera and a position, which may lie on one of them.
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

/// Areas that cover the cells of a raster: neighbours of one class are one rectangle. Areas of one class follow each
/// other.
/// \param classOf the class of a cell, empty where there is nothing
[[nodiscard]] std::vector<Shape> cellAreas(int columns, int rows,
                                           const std::function<std::string(int, int)>& classOf,
                                           const std::function<ViewPoint(int, int)>& cornerAt);

}  // namespace quarn
