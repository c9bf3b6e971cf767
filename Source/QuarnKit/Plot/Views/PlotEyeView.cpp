#include "PlotEyeView.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QuarnKit/Base/IsFinite.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

// A perspective that is wider than this from its middle, in radians, distorts its sides too much.
constexpr double kMaxPerspectiveAngle = 60.0 * kDegree;
// The same for a flat screen, which has its true shape at any angle.
constexpr double kMaxFlatAngle = 89.0 * kDegree;
// A panorama that is higher than this, in radians, distorts what is above.
constexpr double kMaxElevation = 60.0 * kDegree;
// Maximum vertical part of the heading of a panorama, a unit vector.
constexpr double kMaxSteepness = 0.5;

// A farther eye point sees the same, at a distance in sizes of the surface at which positions are
// still exact.
constexpr double kMaxDistance = 1e4;

// Positions of a screen as directions from the eye.
struct Field {
    double minCosine = 1.0;     // of the angle from the view axis
    double maxSteepness = 0.0;  // of the directions, as unit vectors

    [[nodiscard]] double maxAngle() const { return std::acos(std::clamp(minCosine, -1.0, 1.0)); }
};

Field fieldOf(const EyePose& pose, const PositionVisitor& visitPositions) {
    Field field;
    visitPositions([&](const Point<double, 3>& position) {
        const Point<double, 3> direction = normalized(position - pose.eye);
        if (!isFinite(direction)) return;
        field.minCosine = std::min(field.minCosine, dot(direction, pose.heading));
        field.maxSteepness = std::max(field.maxSteepness, std::abs(direction[2]));
    });
    return field;
}

// Returns a unit vector: that of the pose, the direction to the middle of the screen, or +Y.
Point<double, 3> headingOf(const EyePose& pose) {
    for (const Point<double, 3>& direction : {pose.heading, pose.eye * -1.0}) {
        const Point<double, 3> heading = normalized(direction);
        if (isFinite(heading) && length(heading) > 0.5) return heading;
    }
    return {0.0, 1.0, 0.0};
}

Point<double, 3> nearEye(const Point<double, 3>& eye) {
    if (!isFinite(eye)) return {0.0, -kMaxDistance, 0.0};
    const double distance = length(eye);
    return distance > kMaxDistance ? eye * (kMaxDistance / distance) : eye;
}

Projection projectionOf(const IScreenGeometry& geometry, const EyePose& pose, const Field& field) {
    if (geometry.getType() == SphericalScreen::type()) return Projection::Fisheye;
    if (geometry.getType() == CylinderScreen::type()) return Projection::Panorama;
    const double limit = geometry.isPlanar() ? kMaxFlatAngle : kMaxPerspectiveAngle;
    if (field.maxAngle() <= limit) return Projection::Perspective;
    const bool isLevel =
        std::abs(pose.heading[2]) < kMaxSteepness && field.maxSteepness < std::sin(kMaxElevation);
    return isLevel ? Projection::Panorama : Projection::Fisheye;
}

}  // namespace

EyeView chooseEyeView(const IScreenGeometry& geometry, const EyePose& givenPose,
                      const PositionVisitor& visitPositions) {
    EyePose pose = givenPose;
    pose.eye = nearEye(pose.eye);
    pose.heading = headingOf(pose);
    const Field field = fieldOf(pose, visitPositions);
    const Projection projection = projectionOf(geometry, pose, field);
    // The horizon of a panorama is level.
    if (projection == Projection::Panorama) pose.heading[2] = 0.0;
    return {.place = pose.place,
            .camera = Camera::fromEye(pose.eye, pose.heading, projection),
            .maxAngle = field.maxAngle()};
}

EyeView eyeViewOf(const IScreenGeometry& geometry, const PlotSurface& surface) {
    EyePose pose{.place = EyePlace::Center, .eye = {}, .heading = geometry.getCenterOfScreenHeading()};
    if (const auto* sphere = dynamic_cast<const SphericalScreen*>(&geometry)) {
        pose.eye = sphere->getParams().center;
    } else if (const auto* cylinder = dynamic_cast<const CylinderScreen*>(&geometry)) {
        pose.eye = cylinder->getParams().center;
    } else {
        pose.place = EyePlace::EyePoint;
        pose.eye = geometry.getEyepoint();
    }
    pose.eye = surface.toScene(pose.eye);
    return chooseEyeView(geometry, pose, [&](const auto& visit) {
        for (int row = 0; row <= surface.rows(); ++row)
            for (int column = 0; column <= surface.columns(); ++column)
                if (const auto position = surface.at(column, row)) visit(*position);
    });
}

}  // namespace quarn
