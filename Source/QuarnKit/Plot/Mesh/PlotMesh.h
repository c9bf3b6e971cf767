/// \file
/// The page of a plot of a mesh.
#pragma once

#include <string>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Plot/Views/PlotStretch.h>

namespace quarn {

/// An SVG document with a mesh in perspective, from above, from the viewer and in UV, which shows at a glance holes,
/// triangles that are turned over, and UVs that are faulty.
[[nodiscard]] std::string plotMeshPage(const IScreenGeometry& mesh, const std::string& file,
                                       const std::string& unit, PlotColor color = PlotColor::Side);

}  // namespace quarn
