/// \file
/// Cameras of the views of a plot.
#pragma once

#include <span>

#include <QuarnScreen/Point.h>

namespace quarn {

/// A position in a view's plane: x to the right, y upwards, in sizes of the surface; in radians for
/// Projection::Fisheye and Projection::Panorama.
using ViewPoint = Point<double, 2>;

enum class Projection {
    Parallel,
    Perspective,
    Fisheye,  ///< Equidistant: the distance from the middle is the angle from the view axis.
    Panorama  ///< Azimuth and elevation.
};

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
    /// Projection from a position of the scene, with +Z upwards. Up or down, the view has the
    /// orientation of a viewer who faces +Y and tilts the head: seen upwards, +Y is at the bottom.
    /// \param heading direction of the view axis, not zero
    /// \param projection any but Projection::Parallel
    [[nodiscard]] static Camera fromEye(const Point<double, 3>& eye, const Point<double, 3>& heading,
                                        Projection projection);

    [[nodiscard]] Projection projection() const { return kind; }
    /// Returns true if straight lines are curved in the view.
    [[nodiscard]] bool isCurved() const {
        return kind == Projection::Fisheye || kind == Projection::Panorama;
    }
    /// Returns the position of the camera; the origin for a camera at infinity.
    [[nodiscard]] const Point<double, 3>& position() const { return eye; }

    /// Projects a position to the view's plane.
    [[nodiscard]] ViewPoint project(const Point<double, 3>& position) const;
    /// Projects the corners of a small shape next to each other, even if it crosses the edge of a
    /// view all around the camera. Returns false if the view cannot show the shape as a whole: it
    /// is behind the camera, or around the point to which no direction of the view leads.
    /// \param seen the projected corners, as many as \p corners
    [[nodiscard]] bool projectShape(std::span<const Point<double, 3>> corners,
                                    std::span<ViewPoint> seen) const;
    /// Projects a direction in parallel, without perspective.
    [[nodiscard]] ViewPoint projectDirection(const Point<double, 3>& direction) const {
        return {dot(direction, right), dot(direction, up)};
    }
    /// Returns the angle from the view axis to a coordinate of a position on an axis of the view,
    /// in radians.
    /// \pre the projection is not Projection::Parallel
    [[nodiscard]] double angleOf(double coordinate) const;
    /// Returns a coordinate that increases towards the camera.
    [[nodiscard]] double nearness(const Point<double, 3>& position) const;
    /// Returns a depth that increases towards the camera. It is linear along straight lines in the
    /// view, for a curved view only along short ones.
    [[nodiscard]] double depth(const Point<double, 3>& position) const;
    /// Returns true if the camera is on the side of a plane that its normal points to.
    [[nodiscard]] bool sees(const Point<double, 3>& position, const Point<double, 3>& normal) const;

private:
    Camera(Projection projection, const Point<double, 3>& towardsCamera, const Point<double, 3>& upwards,
           const Point<double, 3>& cameraPosition, double unitDistance);

    /// Returns the distance from the camera along the view axis.
    [[nodiscard]] double ahead(const Point<double, 3>& position) const {
        return dot(eye - position, backward);
    }
    [[nodiscard]] ViewPoint projectFisheye(const Point<double, 3>& position) const;
    [[nodiscard]] ViewPoint projectPanorama(const Point<double, 3>& position) const;
    /// Moves a projected position of a curved view next to another one.
    [[nodiscard]] ViewPoint movedNear(const ViewPoint& point, const ViewPoint& middle) const;

    Projection kind;
    Point<double, 3> right;
    Point<double, 3> up;
    Point<double, 3> backward;  // towards the camera
    Point<double, 3> eye;
    double zoom;  // distance at which a perspective shows lengths as they are
};

}  // namespace quarn
