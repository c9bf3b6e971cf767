/// \file
/// The UV layout of a mesh.
#pragma once

#include <QuarnKit/Plot/Page/PlotPanel.h>

#include "PlotMeshData.h"

namespace quarn {

/// Draws the triangles in the plane of UV and the unit square, or a note that the mesh has no UV.
/// \param stretch colors the triangles by their stretch; nullptr for defects
void drawMeshUv(SvgWriter& svg, const Box& box, const PlotMeshData& mesh, const StretchScale* stretch);

}  // namespace quarn
