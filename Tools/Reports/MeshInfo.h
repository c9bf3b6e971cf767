/// \file
/// The properties that only meshes have. For the command info.
#pragma once

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Measure/SurfaceMeasures.h>

#include "Base/Json.h"
#include "Reports/AlignedText.h"
#include "Reports/RoundedNumbers.h"

namespace quarn::tool {

/// Returns the member "mesh" of the JSON document.
/// \param surface the measures of the screen
/// \pre screen.mesh has a value
[[nodiscard]] Json jsonMesh(const Screen& screen, const SurfaceMeasures& surface);

/// Appends the properties of a mesh, for people.
/// \param surface the measures of the screen
/// \pre screen.mesh has a value
void addMeshLines(const Screen& screen, const SurfaceMeasures& surface, const RoundedNumbers& numbers,
                  AlignedText& lines);

}  // namespace quarn::tool
