/// \file
/// What each view of a plot shows, before it has a place on the page.
#pragma once

#include <string>
#include <vector>

#include "PlotStretch.h"
#include "PlotSurface.h"

namespace quarn {

/// A position in a view's plane: x to the right, y upwards, in sizes of the surface.
using ViewPoint = Point<double, 2>;

/// How a view looks at a surface.
class Camera {
public:
    /// From the right in front and above, on the viewer's side.
    /// \param farthest distance from the middle of the farthest thing that the view shows besides the surface
    [[nodiscard]] static Camera perspective(double farthest);
    /// From above, with the viewer's right to the right.
    [[nodiscard]] static Camera plan();
    /// From the viewer.
    [[nodiscard]] static Camera front();

    [[nodiscard]] ViewPoint project(const Point<double, 3>& position) const;
    /// As project(), seen from infinitely far away.
    [[nodiscard]] ViewPoint projectDirection(const Point<double, 3>& direction) const {
        return {dot(direction, right), dot(direction, up)};
    }
    /// Grows towards the camera.
    [[nodiscard]] double nearness(const Point<double, 3>& position) const { return dot(position, backward); }
    /// Grows towards the camera too, and along a straight line of space evenly as the line does in the view.
    [[nodiscard]] double depth(const Point<double, 3>& position) const {
        return nearness(position) * enlargement(position);
    }
    /// Whether a plane through \p position with the normal \p normal shows the camera the normal's side.
    [[nodiscard]] bool sees(const Point<double, 3>& position, const Point<double, 3>& normal) const;

private:
    Camera(const Point<double, 3>& towardsCamera, double cameraDistance);

    [[nodiscard]] double enlargement(const Point<double, 3>& position) const;

    Point<double, 3> right;
    Point<double, 3> up;
    Point<double, 3> backward;  // towards the camera
    double distance;            // of the camera from the middle; 0 for a camera at infinity
};

/// A stroke or an area of a view.
struct Shape {
    std::string styleClass;
    std::vector<ViewPoint> points = {};
    bool isArea = false;
};

/// Classes of what surfaceShapes() draws. A side's name is followed by its shade, from 0 in the dark.
inline constexpr const char* kFrontClass = "f";
inline constexpr const char* kBackClass = "b";
inline constexpr const char* kGridClass = "grid";
inline constexpr const char* kBoundaryClass = "outline";
inline constexpr const char* kSeamClass = "seam";
inline constexpr int kShades = 18;

/// Class of a side with its shade.
/// \param normal of length 1, on the front
[[nodiscard]] std::string shadeClass(const Camera& camera, const Point<double, 3>& position,
                                     const Point<double, 3>& normal);

/// The surface with its grid and outline, to be painted in this order.
///
/// The front is the side from which u runs from left to right and v from top to bottom; the other one shows
/// pictures mirrored.
/// \param stretch paints the cells by their stretch, where there is one
[[nodiscard]] std::vector<Shape> surfaceShapes(const PlotSurface& surface, const Camera& camera,
                                               const StretchScale* stretch = nullptr);

/// Whether the surface stands between the camera and a position.
[[nodiscard]] bool hides(const PlotSurface& surface, const Camera& camera, const Point<double, 3>& position);

/// Whether a polygon has a point of its plane inside.
[[nodiscard]] bool isInside(const std::vector<Point<double, 2>>& polygon, const Point<double, 2>& point);

}  // namespace quarn
