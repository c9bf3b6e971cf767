/// \file
/// The view of a mesh from its eye point.
#pragma once

#include <QuarnKit/Plot/Views/PlotEyeView.h>

#include "PlotMeshData.h"

namespace quarn {

/// Returns the view of a mesh from its eye point, the origin of its frame.
///
/// A mesh that passes through its eye point is seen from one and a half sizes before its middle, on
/// the side to which most of its front faces, or from the viewer's side if that is no side.
[[nodiscard]] EyeView eyeViewOf(const IScreenGeometry& geometry, const PlotMeshData& mesh);

}  // namespace quarn
