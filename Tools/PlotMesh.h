/// \file
/// The page of a plot of a mesh.
#pragma once

#include <string>

#include "ScreenReader.h"

namespace quarn {

/// An SVG document: perspective, plan, front and UV plane with the outline and the UV grid on the surface. Nothing is
/// hidden by anything else.
[[nodiscard]] std::string plotMeshPage(const Screen& screen, const std::string& unit);

}  // namespace quarn
