/// \file
/// The shapes of a mesh in the views of a plot.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Plot/Views/PlotViews.h>

#include "PlotMeshData.h"
#include "PlotRaster.h"

namespace quarn {

// Classes of a mesh in addition to those of surfaceShapes().
inline constexpr const char* kFlippedClass = "flipped";
inline constexpr const char* kBadUvClass = "bad-uv";
inline constexpr const char* kOverlapClass = "overlap";
inline constexpr const char* kHoleClass = "hole";
/// Class of boundaries if there are many.
inline constexpr const char* kThinClass = "thin";
/// Follows the class of a line that the mesh hides.
inline constexpr const char* kHiddenSuffix = "-hidden";
/// Follows the class of a triangle that is drawn as a dot because it may be too small.
inline constexpr const char* kDotSuffix = "-dot";

/// Number of cells along the longer side of a view; a cell is at most a pixel.
inline constexpr int kPlotCells = 600;
/// Up to this many triangles are drawn one by one.
inline constexpr std::size_t kMaxTriangles = 5000;
/// Maximum number of points of all lines of one class; further lines are omitted.
inline constexpr std::size_t kMaxLinePoints = 10000;

/// More boundaries than this are drawn thin.
inline constexpr std::size_t kMaxThickBoundaries = 50;
/// More boundaries than this are not drawn.
inline constexpr std::size_t kMaxBoundaries = 2500;

/// Returns the areas of triangles in painting order. More than kMaxTriangles become the regions of
/// \p raster.
[[nodiscard]] std::vector<Shape> triangleAreas(const std::vector<TriangleCorners>& triangles,
                                               const Camera& camera, const PlotRaster& raster,
                                               const std::function<std::string(std::uint32_t)>& classOf);

/// Returns a note about triangles that a raster leaves out; empty if there are none.
[[nodiscard]] std::string leftOutText(const PlotRaster& raster);

/// Returns a mesh with its grid, seams, boundaries and holes, in painting order.
///
/// The front is the side from which the corners of a triangle are counterclockwise.
/// \param eye an eye point in the view; nothing if there is none
/// \param stretch colors the triangles by their stretch; nullptr for sides and defects
[[nodiscard]] SceneView meshView(const PlotMeshData& mesh, const Camera& camera,
                                 const std::optional<Point<double, 3>>& eye = {},
                                 const StretchScale* stretch = nullptr);

/// Returns kFlippedClass or kBadUvClass; nullptr for a triangle without a defect.
[[nodiscard]] const char* defectClass(const TriangleMark& mark);

/// Returns the triangles of one class of defects, to be drawn again as dots because they may be too
/// small to see. Empty if there are too many, or if all triangles are drawn one by one.
[[nodiscard]] std::vector<std::uint32_t> dottedTriangles(const PlotMeshData& mesh,
                                                         const std::string& styleClass);

/// Returns the class of each triangle by its stretch.
[[nodiscard]] std::vector<std::string> stretchClasses(const PlotMeshData& mesh, const StretchScale& stretch);

}  // namespace quarn
