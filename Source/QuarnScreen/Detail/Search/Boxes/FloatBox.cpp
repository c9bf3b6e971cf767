#include "FloatBox.h"

#include <algorithm>
#include <cmath>

namespace quarn::detail {
namespace {

using FloatLimits = std::numeric_limits<float>;

// Largest magnitude that certainly rounds to a finite float: half of the largest float.
constexpr double kMaxRounded = static_cast<double>(FloatLimits::max()) * 0.5;

}  // namespace

float roundedDown(double number) {
    if (number < -kMaxRounded) return -FloatLimits::infinity();
    const double bounded = std::min(number, kMaxRounded);
    const double step = std::abs(bounded) * static_cast<double>(FloatLimits::epsilon()) +
                        static_cast<double>(FloatLimits::denorm_min());
    return static_cast<float>(bounded - step);
}

float roundedUp(double number) {
    return -roundedDown(-number);
}

void FloatBox::include(const FloatBox& other) {
    for (std::size_t i = 0; i < 3; ++i) {
        lower[i] = std::min(lower[i], other.lower[i]);
        upper[i] = std::max(upper[i], other.upper[i]);
    }
}

}  // namespace quarn::detail
