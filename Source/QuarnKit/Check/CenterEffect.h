/// \file
/// Queries that do not use the center of a screen.
#pragma once

#include <optional>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// Queries that are valid only for some centers.
enum class CenterQuery {
    Rays,               ///< Valid if the axis of a cylinder is the Z axis.
    CalibrationPoints,  ///< Relative to the center of a cylinder or sphere.
};

/// Returns the part of a screen's center that a query does not use; nothing if it uses all of it.
[[nodiscard]] std::optional<Point<double, 3>> ignoredCenterOf(const IScreenGeometry& screen,
                                                              CenterQuery query);

}  // namespace quarn
