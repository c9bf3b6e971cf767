/// \file
/// Utilities that serve any screen.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/IScreenGeometry.h>

/// Utilities that serve any screen.
namespace ScreenUtils {

/// Rough ratio of a screen's width to its height, from its UV mapping alone: how far a small step in u moves
/// a position, over the same for v, summed over 25 places.
///
/// Logs the estimate at info level, and at warn level that there is none, through
/// "Quarn.QuarnControl.ScreenUtils". Safe on any number of threads.
/// \return 1.0 where fewer than 5 places can be used
[[nodiscard]] QUARNSCREEN_EXPORT double estimateAspectRatioUV(IScreenGeometry& screen);

}  // namespace ScreenUtils
