/// \file
/// Scaling, rotation and translation of positions.
#pragma once

#include <array>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Scales a position, rotates it about the origin, then translates it.
class RigidTransform {
public:
    /// \param angles rotations in degrees, applied in this order: angles[2] about Y, angles[1]
    ///        about X, then angles[0] about Z, negated
    RigidTransform(const Point<double, 3>& move, const Point<double, 3>& angles, double factor);

    [[nodiscard]] Point<double, 3> apply(const Point<double, 3>& point) const;

private:
    using Rows = std::array<Point<double, 3>, 3>;

    static Rows rotationAbout(const Point<double, 3>& axis, double angle);
    static Rows product(const Rows& a, const Rows& b);

    Point<double, 3> translation;
    Rows rotation;
    double scale;
};

}  // namespace quarn::detail
