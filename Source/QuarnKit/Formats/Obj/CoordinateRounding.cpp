#include "CoordinateRounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QuarnKit/Base/NumberText.h>

namespace quarn {

CoordinateRounding roundingOf(const Bounds<3>& bounds) {
    CoordinateRounding rounding{.size = length(bounds.extent())};
    for (std::size_t i = 0; i < 3; ++i)
        rounding.largest = std::max({rounding.largest, std::abs(bounds.min[i]), std::abs(bounds.max[i])});
    const auto largest = static_cast<float>(rounding.largest);
    rounding.step = std::nextafter(largest, std::numeric_limits<float>::infinity()) - largest;
    return rounding;
}

std::string roundingText(const CoordinateRounding& rounding, const std::string& unit) {
    constexpr int kDigits = 4;
    constexpr int kLargestDigits = 7;
    const std::string suffix = unit.empty() ? "" : " " + unit;
    return "positions are rounded to multiples of " + roundedNumberText(rounding.step, kDigits) + suffix +
           ", because coordinates reach " + roundedNumberText(rounding.largest, kLargestDigits) + suffix +
           " in a mesh of " + roundedNumberText(rounding.size, kDigits) + suffix;
}

}  // namespace quarn
