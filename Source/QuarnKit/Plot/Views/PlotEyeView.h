/// \file
/// The view of a screen from its eye point.
#pragma once

#include <functional>

#include <QuarnScreen/IScreenGeometry.h>

#include "PlotCamera.h"
#include "PlotSurface.h"

namespace quarn {

/// Where the view from the eye point is taken from.
enum class EyePlace {
    Center,       ///< The center of a sphere or a cylinder.
    EyePoint,     ///< IScreenGeometry::getEyepoint().
    BeforeScreen  ///< A position before the front, since the screen passes through its eye point.
};

/// A view from the eye point.
struct EyeView {
    EyePlace place = EyePlace::EyePoint;
    Camera camera;
    double maxAngle = 0.0;  ///< Between the view axis and a position of the screen, in radians.
};

/// A position and a direction in the scene.
struct EyePose {
    EyePlace place = EyePlace::EyePoint;
    Point<double, 3> eye;
    Point<double, 3> heading;  ///< Of any length; zero if there is none.
};

/// Calls its argument with positions of a screen.
using PositionVisitor = std::function<void(const std::function<void(const Point<double, 3>&)>&)>;

/// Chooses the projection that shows a screen from a position.
///
/// A sphere is a fisheye picture, and a cylinder a panorama. Any other screen is a perspective if
/// it is within 60 degrees of the heading, or flat and before the eye. Otherwise it is a panorama
/// if it is level and within 60 degrees of the horizon, and a fisheye picture if not.
[[nodiscard]] EyeView chooseEyeView(const IScreenGeometry& geometry, const EyePose& pose,
                                    const PositionVisitor& visitPositions);

/// Returns the view of an analytic screen: from the center of a sphere or a cylinder, and from the
/// eye point of any other screen.
[[nodiscard]] EyeView eyeViewOf(const IScreenGeometry& geometry, const PlotSurface& surface);

}  // namespace quarn
