#include "RigidTransform.h"

#include <cmath>
#include <cstddef>

namespace quarn::detail {
namespace {

// Intended: a degree in radians with eight digits; a reader would expect full precision. Stored
// setups depend on it.
constexpr double kRadiansPerDegree = 0.017453292;

}  // namespace

RigidTransform::RigidTransform(const Point<double, 3>& move, const Point<double, 3>& angles, double factor)
    : translation(move),
      rotation(product(product(rotationAbout({0.0, 0.0, 1.0}, angles[0] * -kRadiansPerDegree),
                               rotationAbout({1.0, 0.0, 0.0}, angles[1] * kRadiansPerDegree)),
                       rotationAbout({0.0, 1.0, 0.0}, angles[2] * kRadiansPerDegree))),
      scale(factor) {}

Point<double, 3> RigidTransform::apply(const Point<double, 3>& point) const {
    const Point<double, 3> scaled = point * scale;
    return Point<double, 3>(dot(rotation[0], scaled), dot(rotation[1], scaled), dot(rotation[2], scaled)) +
           translation;
}

// Source: Rodrigues' rotation formula for a unit axis.
RigidTransform::Rows RigidTransform::rotationAbout(const Point<double, 3>& axis, double angle) {
    const double x = axis[0];
    const double y = axis[1];
    const double z = axis[2];
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double k = 1.0 - c;
    return {Point<double, 3>(x * x * k + c, x * y * k - s * z, x * z * k + s * y),
            Point<double, 3>(x * y * k + s * z, y * y * k + c, y * z * k - s * x),
            Point<double, 3>(x * z * k - s * y, y * z * k + s * x, z * z * k + c)};
}

RigidTransform::Rows RigidTransform::product(const Rows& a, const Rows& b) {
    Rows result;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j)
            result[i][j] = dot(a[i], Point<double, 3>(b[0][j], b[1][j], b[2][j]));
    }
    return result;
}

}  // namespace quarn::detail
