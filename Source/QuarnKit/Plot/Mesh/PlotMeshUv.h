/// \file
/// The UV layout of a mesh.
#pragma once

#include <QuarnKit/Plot/Page/PlotPanel.h>

#include "PlotMeshData.h"

namespace quarn {

/// Draws the triangles in the plane of UV around the unit square, or says that there are none.
/// \param stretch paints the triangles by their stretch, where there is one
void drawMeshUv(SvgWriter& svg, const Box& box, const PlotMeshData& mesh, const StretchScale* stretch);

}  // namespace quarn
