/// \file
/// Sizes that screens have in practice, to find lengths that are in another unit than intended.
#pragma once

#include <optional>
#include <string>

namespace quarn {

/// True if a screen may be of this size: from 5 cm to 1 km across. A screen of 50 m whose meters
/// were read as millimeters is below that.
[[nodiscard]] bool isPlausibleSize(double meters);

/// True if most screens are about of this size: from 0.5 m to 100 m across.
[[nodiscard]] bool isUsualSize(double meters);

/// Returns the unit of length in which \p number is a usual size; nothing if there is none.
[[nodiscard]] std::optional<std::string> likelyUnitOf(double number);

}  // namespace quarn
