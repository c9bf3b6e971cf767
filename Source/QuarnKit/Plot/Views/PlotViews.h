/// \file
/// The shapes that a view of an analytic screen shows.
#pragma once

#include <string>
#include <vector>

#include "PlotCamera.h"
#include "PlotStretch.h"
#include "PlotSurface.h"

namespace quarn {

/// A polyline or a polygon in a view, with its class in the style sheet.
struct Shape {
    std::string styleClass;
    std::vector<ViewPoint> points = {};
    bool isArea = false;                             ///< True for a polygon.
    std::vector<std::vector<ViewPoint>> holes = {};  ///< Of a polygon.
};

/// What a view of a scene shows.
struct SceneView {
    std::vector<Shape> shapes = {};  ///< In painting order.
    bool isEyeHidden = false;        ///< True if the surface hides the eye point.
    std::string note = {};           ///< What the view leaves out; empty if nothing.
};

/// Classes of the shapes of surfaceShapes(). The shade follows the class of a side, from 0 for
/// dark.
inline constexpr const char* kFrontClass = "f";
inline constexpr const char* kBackClass = "b";
inline constexpr const char* kGridClass = "grid";
inline constexpr const char* kBoundaryClass = "boundary";
inline constexpr const char* kSeamClass = "seam";
inline constexpr int kShades = 18;

/// Returns the class of a side with its shade.
/// \param normal unit normal of the front
[[nodiscard]] std::string shadeClass(const Camera& camera, const Point<double, 3>& position,
                                     const Point<double, 3>& normal);

/// Returns a surface with its grid and boundary, in painting order.
///
/// The front is the side from which u increases to the right and v downwards. Pictures are mirrored
/// on the back.
/// \param stretch colors the cells by their stretch; nullptr for sides
[[nodiscard]] std::vector<Shape> surfaceShapes(const PlotSurface& surface, const Camera& camera,
                                               const StretchScale* stretch = nullptr);

/// Returns true if a surface hides a position from the camera.
[[nodiscard]] bool hides(const PlotSurface& surface, const Camera& camera, const Point<double, 3>& position);

/// Returns true if a polygon contains a point.
[[nodiscard]] bool isInside(const std::vector<Point<double, 2>>& polygon, const Point<double, 2>& point);

}  // namespace quarn
