/// \file
/// Utilities for any screen.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/IScreenGeometry.h>

/// Utilities for any screen.
///
/// \code{.cpp}
/// FlatScreen screen(4.0, 2.0);
/// const double ratio = ScreenUtils::estimateAspectRatioUV(screen);
/// assert(std::abs(ratio - 2.0) < 1e-9);
/// \endcode
namespace ScreenUtils {

/// Estimates the ratio of a screen's width to its height from its UV mapping.
///
/// The estimate is the distance that a small step in u moves a position, divided by the distance
/// that the same step in v moves it. Both distances are summed over a grid of 25 UVs. A UV is used
/// if the screen maps it and both steps, and if both distances are not zero.
///
/// Logs the estimate at level info, or a warning if there is none, to the logger
/// "Quarn.QuarnControl.ScreenUtils".
///
/// Thread-safety: as for the const operations of the screen.
/// \return the ratio; 1.0 if fewer than 5 UVs can be used
[[nodiscard]] QUARNSCREEN_EXPORT double estimateAspectRatioUV(IScreenGeometry& screen);

}  // namespace ScreenUtils
