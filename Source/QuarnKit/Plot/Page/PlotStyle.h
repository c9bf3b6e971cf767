/// \file
/// Colors, strokes and fonts of plots.
#pragma once

#include <string>

namespace quarn {

/// Returns the style sheet of every plot. Its shades are distinguishable in grayscale.
[[nodiscard]] std::string plotStyleSheet();
/// Returns the additional rules of plots of meshes.
[[nodiscard]] std::string meshStyleRules();
/// Returns the elements to which the rules of plots of meshes refer.
[[nodiscard]] std::string meshDefinitions();
/// Returns the colors of the stretch, from dark to light.
[[nodiscard]] std::string stretchStyleRules();

}  // namespace quarn
