/// \file
/// The regions of a raster as polygons.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QuarnKit/Plot/Views/PlotViews.h>

namespace quarn {

/// Cells with classes.
struct ClassRaster {
    int columns = 0;
    int rows = 0;
    std::vector<std::string> classes = {};  ///< Of the cells, from 1; an empty cell has the class 0.
    std::vector<std::size_t> cells = {};    ///< Row by row from the bottom, as numbers of classes.
};

/// Collects the classes of cells.
/// \param classOf returns the class of a cell; empty for none
[[nodiscard]] ClassRaster buildClassRaster(int columns, int rows,
                                           const std::function<std::string(int, int)>& classOf);

/// Covers the cells of a raster with polygons, one for each region of connected cells of one class.
/// Polygons of one class are consecutive.
///
/// The sides of the polygons are smooth: they are at most about a cell from the steps between the
/// cells. Regions next to each other have the same side.
/// \param toView returns the position of a corner of cells, or between corners
[[nodiscard]] std::vector<Shape> regionAreas(const ClassRaster& raster,
                                             const std::function<ViewPoint(const ViewPoint&)>& toView);

}  // namespace quarn
