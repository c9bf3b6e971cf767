/// \file
/// What each view of a plot shows of a mesh.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <QuarnKit/Plot/Views/PlotViews.h>

#include "PlotMeshData.h"
#include "PlotRaster.h"

namespace quarn {

// Classes of what meshes have besides those of surfaceShapes().
inline constexpr const char* kFlippedClass = "turned";
inline constexpr const char* kFaultyClass = "faulty";
inline constexpr const char* kHoleClass = "hole";
/// Class of outlines where there are many.
inline constexpr const char* kThinClass = "thin";
/// Follows the class of a line that the mesh hides.
inline constexpr const char* kHiddenSuffix = "-hidden";
/// Follows the class of a triangle that is too small to be seen.
inline constexpr const char* kDotSuffix = "-dot";

/// How many cells the longer side of a view has: about a pixel each.
inline constexpr int kPlotCells = 380;
/// Up to this many triangles are drawn as they are.
inline constexpr std::size_t kMaxTriangles = 5000;
/// As many points as all lines of one class have; what comes then is left out.
inline constexpr std::size_t kMaxLinePoints = 10000;

/// With more outlines than this they are drawn thin, and with more than the second number not at all.
inline constexpr std::size_t kMaxThickBoundaries = 50;
inline constexpr std::size_t kMaxBoundaries = 2500;

/// Areas of triangles, to be painted in this order; those of very many triangles are rounded to cells of \p raster.
[[nodiscard]] std::vector<Shape> triangleAreas(const std::vector<TriangleCorners>& triangles,
                                               const Camera& camera, const PlotRaster& raster,
                                               const std::function<std::string(std::uint32_t)>& classOf);

/// The mesh with its grid, seams, outline and holes, to be painted in this order.
///
/// The front is the side from which the corners of most triangles of a piece run anticlockwise.
/// \param stretch paints the triangles by their stretch, where there is one
[[nodiscard]] std::vector<Shape> meshShapes(const PlotMeshData& mesh, const Camera& camera,
                                            const StretchScale* stretch = nullptr);

/// kFlippedClass or kFaultyClass, or nothing for a triangle without fault.
[[nodiscard]] const char* faultClass(const TriangleMark& mark);

/// The triangles of one class of faults, which could be too small to be seen, to be drawn once more as dots. Nothing
/// where they are many, or where all triangles are drawn as they are.
[[nodiscard]] std::vector<std::uint32_t> dottedTriangles(const PlotMeshData& mesh,
                                                         const std::string& styleClass);

/// The class of each triangle by its stretch.
[[nodiscard]] std::vector<std::string> stretchClasses(const PlotMeshData& mesh, const StretchScale& stretch);

}  // namespace quarn
