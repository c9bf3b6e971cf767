/// \file
/// Scale, turn and move.
#pragma once

#include <array>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Scales a position, turns it about the origin, then moves it.
class RigidTransform {
public:
    /// \param angles turns in degrees, done in this order as they act on a position: angles[2] about Y, angles[1] about
    ///        X, then angles[0] about Z, the last one negated
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
