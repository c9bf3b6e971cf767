/// \file
/// The mappings of the cylinder and the sphere, for comparison of times. Unlike ReferenceCylinder
/// and ReferenceSphere, the compiler sees through them and can inline them.
#pragma once

#include <algorithm>
#include <cmath>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn::test {

inline constexpr double kTurn = 6.283185307179586;

/// A cylinder whose mappings the compiler sees through; the same operations in the same order.
struct ReferenceCylinderFormulas {
    CylinderScreenParams p;

    [[nodiscard]] Point<double, 3> mapInto3D(const Point<double, 2>& uv) const {
        const double theta = (1 - uv[0]) * p.minTheta + uv[0] * p.maxTheta;
        return {std::sin(theta) * p.radius + p.center[0], std::cos(theta) * p.radius + p.center[1],
                (1 - uv[1]) * (p.height * 0.5) - (p.height * 0.5) * uv[1] + p.center[2]};
    }

    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point) const {
        const double v = (p.height * 0.5 - (point[2] - p.center[2])) / p.height;
        double theta = std::atan2((point[0] - p.center[0]) / p.radius, (point[1] - p.center[1]) / p.radius);
        if (theta < 0.0 && std::max(p.minTheta, p.maxTheta) >= theta + kTurn) theta += kTurn;
        return {(theta - p.minTheta) / (p.maxTheta - p.minTheta), v};
    }

    /// The calls into the C library alone.
    [[nodiscard]] double bareCalls(const Point<double, 2>& uv) const {
        const double theta = (1 - uv[0]) * p.minTheta + uv[0] * p.maxTheta;
        return std::atan2(std::sin(theta), std::cos(theta));
    }
};

/// The same for a sphere.
struct ReferenceSphereFormulas {
    SphericalScreenParams p;

    [[nodiscard]] Point<double, 3> mapInto3D(const Point<double, 2>& uv) const {
        const double theta = (1 - uv[0]) * p.minTheta + uv[0] * p.maxTheta;
        const double phi = (1 - uv[1]) * p.maxPhi + uv[1] * p.minPhi;
        return {std::sin(theta) * p.radius * std::cos(phi) + p.center[0],
                std::cos(theta) * p.radius * std::cos(phi) + p.center[1],
                std::sin(phi) * p.radius + p.center[2]};
    }

    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point) const {
        const double phi = std::asin((point[2] - p.center[2]) / p.radius);
        const double v = 1.0 - (phi - p.minPhi) / (p.maxPhi - p.minPhi);
        const double ring = std::cos(phi);
        double theta = std::atan2(((point[0] - p.center[0]) / p.radius) / ring,
                                  ((point[1] - p.center[1]) / p.radius) / ring);
        if (theta < 0.0 && p.maxTheta >= theta + kTurn) theta += kTurn;
        return {(theta - p.minTheta) / (p.maxTheta - p.minTheta), v};
    }

    [[nodiscard]] double bareCalls(const Point<double, 2>& uv) const {
        const double theta = (1 - uv[0]) * p.minTheta + uv[0] * p.maxTheta;
        const double phi = (1 - uv[1]) * p.maxPhi + uv[1] * p.minPhi;
        const double elevation = std::asin(std::sin(phi));
        return std::cos(phi) + std::cos(elevation) + std::atan2(std::sin(theta), std::cos(theta));
    }
};

}  // namespace quarn::test
