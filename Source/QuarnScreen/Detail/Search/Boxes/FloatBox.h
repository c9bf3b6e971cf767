/// \file
/// Boxes in single precision.
#pragma once

#include <array>
#include <cstddef>
#include <limits>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Returns a float that is not greater than a number, and less by few rounding steps. The number is
/// not NaN.
[[nodiscard]] float roundedDown(double number);

/// Returns a float that is not less than a number, and greater by few rounding steps. The number is
/// not NaN.
[[nodiscard]] float roundedUp(double number);

/// An axis-aligned box in single precision. Half the memory means half the memory traffic, which
/// limits a search.
struct FloatBox {
    std::array<float, 3> lower;
    std::array<float, 3> upper;

    /// Extends the box by another one.
    void include(const FloatBox& other);

    /// Returns the largest box.
    [[nodiscard]] static constexpr FloatBox everywhere() {
        return {{-kInfinity, -kInfinity, -kInfinity}, {kInfinity, kInfinity, kInfinity}};
    }
    /// Returns the empty box.
    [[nodiscard]] static constexpr FloatBox nowhere() {
        return {{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}};
    }

private:
    static constexpr float kInfinity = std::numeric_limits<float>::infinity();
};

}  // namespace quarn::detail
