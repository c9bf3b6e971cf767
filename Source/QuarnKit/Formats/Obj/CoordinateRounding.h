/// \file
/// Rounding of positions to single precision.
#pragma once

#include <string>

#include <QuarnKit/Base/Bounds.h>

namespace quarn {

/// How much the positions of a mesh are rounded, because they are stored in single precision.
struct CoordinateRounding {
    double largest = 0.0;  ///< Largest magnitude of a coordinate.
    double step = 0.0;     ///< Distance between neighboring floats there.
    double size = 0.0;     ///< Diagonal of the bounds.

    /// True if the rounding of a mesh far from its origin affects results.
    [[nodiscard]] bool isLarge() const { return largest > 0.0 && step > kMaxStepRatio * size; }

    /// Fraction of its size to which a mesh may be rounded: a tenth of a pixel of a picture that is
    /// 10,000 pixels wide. A mesh around its origin is rounded to 1e-7 of its size at most.
    static constexpr double kMaxStepRatio = 1e-5;
};

/// Returns the rounding of a mesh with finite bounds.
[[nodiscard]] CoordinateRounding roundingOf(const Bounds<3>& bounds);

/// Returns the rounding in words.
/// \param unit unit of lengths, may be empty
[[nodiscard]] std::string roundingText(const CoordinateRounding& rounding, const std::string& unit);

}  // namespace quarn
