/// \file
/// Cameras of the views of a plot, and the shapes that they show.
#pragma once

#include <string>
#include <vector>

#include "PlotStretch.h"
#include "PlotSurface.h"

namespace quarn {

/// A position in a view's plane: x to the right, y upwards, in sizes of the surface.
using ViewPoint = Point<double, 2>;

/// The projection of a view.
class Camera {
public:
    /// Perspective from the viewer's side, from the right and above.
    /// \param farthest distance of the farthest object in addition to the surface from the origin
    [[nodiscard]] static Camera perspective(double farthest);
    /// Parallel projection from above, with +X to the right and +Y upwards.
    [[nodiscard]] static Camera plan();
    /// Parallel projection from the viewer, with +X to the right and +Z upwards.
    [[nodiscard]] static Camera front();

    /// Projects a position to the view's plane.
    [[nodiscard]] ViewPoint project(const Point<double, 3>& position) const;
    /// Projects a direction in parallel, without perspective.
    [[nodiscard]] ViewPoint projectDirection(const Point<double, 3>& direction) const {
        return {dot(direction, right), dot(direction, up)};
    }
    /// Returns the coordinate along the view axis, which increases towards the camera.
    [[nodiscard]] double nearness(const Point<double, 3>& position) const { return dot(position, backward); }
    /// Returns a depth that increases towards the camera and is linear along straight lines in the
    /// view.
    [[nodiscard]] double depth(const Point<double, 3>& position) const {
        return nearness(position) * enlargement(position);
    }
    /// Returns true if the camera is on the side of a plane that its normal points to.
    [[nodiscard]] bool sees(const Point<double, 3>& position, const Point<double, 3>& normal) const;

private:
    Camera(const Point<double, 3>& towardsCamera, double cameraDistance);

    [[nodiscard]] double enlargement(const Point<double, 3>& position) const;

    Point<double, 3> right;
    Point<double, 3> up;
    Point<double, 3> backward;  // towards the camera
    double distance;            // of the camera from the middle; 0 for a camera at infinity
};

/// A polyline or a polygon in a view, with its class in the style sheet.
struct Shape {
    std::string styleClass;
    std::vector<ViewPoint> points = {};
    bool isArea = false;  ///< True for a polygon.
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
