#include "PlotCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <Common/Detail/Assert.h>

namespace quarn {

namespace {

using std::numbers::pi;

// Every surface is within this distance of the origin, in sizes of the surface.
constexpr double kSurfaceRadius = 0.87;
// Distance of the camera, as a multiple of the distance of the farthest object in the view.
constexpr double kCameraDistance = 3.5;
// A camera in the scene is at least this far from what it shows in true size, in sizes of the
// surface.
constexpr double kMinZoom = 0.1;
// A position that a perspective shows is at least this far ahead, in sizes of the surface.
constexpr double kMinAhead = 1e-6;
// Differences of nearness that count as equal, so that rounding does not decide what is seen.
constexpr double kNearnessStep = 1e-7;
// Angle in radians to the edge of a view all around the camera within which a position is on it, so
// that rounding does not decide the side.
constexpr double kEdgeAngle = 1e-6;
// Horizontal part of a unit vector below which it counts as vertical.
constexpr double kVertical = 0.05;
// Maximum distance in radians between a small shape and its middle in a curved view. Shapes around
// the opposite of the view axis exceed it.
constexpr double kMaxShapeRadius = 4.0;

const Point<double, 3> kUpwards(0.0, 0.0, 1.0);

// +Z points upwards in the view. Seen from above, the viewer's forward direction +Y does.
Point<double, 3> upwardsFor(const Point<double, 3>& backward) {
    if (std::hypot(backward[0], backward[1]) >= kVertical) return kUpwards;
    return {0.0, backward[2] > 0.0 ? 1.0 : -1.0, 0.0};
}

}  // namespace

Camera::Camera(Projection projection, const Point<double, 3>& towardsCamera, const Point<double, 3>& upwards,
               const Point<double, 3>& cameraPosition, double unitDistance)
    : kind(projection),
      right(normalized(cross(upwards, towardsCamera))),
      up(cross(towardsCamera, right)),
      backward(towardsCamera),
      eye(cameraPosition),
      zoom(unitDistance) {}

Camera Camera::perspective(double farthest) {
    const Point<double, 3> backward = normalized(Point<double, 3>(0.62, -1.0, 0.62));
    const double distance = kCameraDistance * std::max(farthest, kSurfaceRadius);
    return {Projection::Perspective, backward, kUpwards, backward * distance, distance};
}

Camera Camera::plan() {
    const Point<double, 3> backward(0.0, 0.0, 1.0);
    return {Projection::Parallel, backward, upwardsFor(backward), {}, 1.0};
}

Camera Camera::front() {
    return {Projection::Parallel, {0.0, -1.0, 0.0}, kUpwards, {}, 1.0};
}

Camera Camera::fromEye(const Point<double, 3>& eye, const Point<double, 3>& heading, Projection projection) {
    const Point<double, 3> backward = normalized(heading) * -1.0;
    return {projection, backward, upwardsFor(backward), eye, std::max(length(eye), kMinZoom)};
}

ViewPoint Camera::project(const Point<double, 3>& position) const {
    switch (kind) {
        case Projection::Parallel:
            break;
        case Projection::Perspective:
            return projectDirection(position - eye) * (zoom / ahead(position));
        case Projection::Fisheye:
            return projectFisheye(position);
        case Projection::Panorama:
            return projectPanorama(position);
    }
    return projectDirection(position);
}

ViewPoint Camera::projectFisheye(const Point<double, 3>& position) const {
    const ViewPoint across = projectDirection(position - eye);
    const double aside = length(across);
    const double angle = std::atan2(aside, ahead(position));
    if (angle > pi - kEdgeAngle) return {0.0, pi};
    return aside > 0.0 ? across * (angle / aside) : ViewPoint();
}

ViewPoint Camera::projectPanorama(const Point<double, 3>& position) const {
    const ViewPoint across = projectDirection(position - eye);
    const double forward = ahead(position);
    const double azimuth = std::atan2(across[0], forward);
    return {azimuth < kEdgeAngle - pi ? azimuth + 2 * pi : azimuth,
            std::atan2(across[1], std::hypot(across[0], forward))};
}

ViewPoint Camera::movedNear(const ViewPoint& point, const ViewPoint& middle) const {
    if (kind == Projection::Panorama)
        return {point[0] + 2 * pi * std::round((middle[0] - point[0]) / (2 * pi)), point[1]};
    const double radius = length(middle);
    const bool isOpposite = length(point) > pi - kEdgeAngle && radius > 0.0;
    return isOpposite ? middle * (pi / radius) : point;
}

bool Camera::projectShape(std::span<const Point<double, 3>> corners, std::span<ViewPoint> seen) const {
    Point<double, 3> sum;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (kind == Projection::Perspective && !(ahead(corners[i]) > kMinAhead)) return false;
        seen[i] = project(corners[i]);
        sum = sum + corners[i];
    }
    if (!isCurved()) return true;
    const ViewPoint middle = project(sum / static_cast<double>(corners.size()));
    for (ViewPoint& point : seen) {
        point = movedNear(point, middle);
        if (length(point - middle) > kMaxShapeRadius) return false;
    }
    return true;
}

double Camera::angleOf(double coordinate) const {
    QUARN_ASSERT(kind != Projection::Parallel);
    return isCurved() ? coordinate : std::atan(coordinate / zoom);
}

double Camera::nearness(const Point<double, 3>& position) const {
    return isCurved() ? -length(position - eye) : dot(position, backward);
}

double Camera::depth(const Point<double, 3>& position) const {
    if (kind != Projection::Perspective) return nearness(position);
    const double distance = ahead(position);
    return (zoom - distance) * (zoom / distance);
}

bool Camera::sees(const Point<double, 3>& position, const Point<double, 3>& normal) const {
    const Point<double, 3> towardsCamera = kind == Projection::Parallel ? backward : eye - position;
    return dot(towardsCamera, normal) > kNearnessStep;
}

}  // namespace quarn
