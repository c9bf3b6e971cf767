/// \file
/// How far from a screen its nominal viewer stands.
#pragma once

namespace quarn::detail {

/// Factor from a screen's size to the y of its view position: the viewer stands farther from a larger screen.
[[nodiscard]] constexpr double viewDistanceFactor(double size) {
    if (size < 1.0) return -1.0;
    if (size < 5.0) return -5.0;
    return -10.0;
}

}  // namespace quarn::detail
