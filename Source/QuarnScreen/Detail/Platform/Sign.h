/// \file
/// Sign of a number.
#pragma once

namespace quarn::detail {

/// Returns 1 or -1, or 0 for zero and NaN.
[[nodiscard]] constexpr int signOf(double number) {
    return static_cast<int>(number > 0.0) - static_cast<int>(number < 0.0);
}

}  // namespace quarn::detail
