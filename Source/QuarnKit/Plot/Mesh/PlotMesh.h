/// \file
/// The page of a plot of a mesh.
#pragma once

#include <string>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Plot/Views/PlotStretch.h>

namespace quarn {

/// Returns an SVG document with a mesh from its eye point, in perspective, from above, from the
/// viewer and in UV. It marks holes, flipped triangles and bad UVs.
/// \param file name of the mesh's file, for the header
/// \param unit unit of the mesh's lengths
[[nodiscard]] std::string plotMeshPage(const IScreenGeometry& mesh, const std::string& file,
                                       const std::string& unit, PlotColor color = PlotColor::Side);

}  // namespace quarn
