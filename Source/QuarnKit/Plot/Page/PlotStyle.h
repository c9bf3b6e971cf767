/// \file
/// Colours, strokes and letters of plots.
#pragma once

#include <string>

namespace quarn {

/// The style sheet of every plot. Its shades stay apart where they are printed without colour.
[[nodiscard]] std::string plotStyleSheet();
/// What plots of meshes have besides.
[[nodiscard]] std::string meshStyleRules();
/// The colours of a stretch, from dark to light.
[[nodiscard]] std::string stretchStyleRules();

}  // namespace quarn
