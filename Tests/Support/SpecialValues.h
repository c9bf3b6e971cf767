/// \file
/// Numbers that break careless arithmetic.
#pragma once

#include <array>
#include <limits>

namespace quarn::test {

inline constexpr std::array kSpecialValues = {
    0.0,
    -0.0,
    1.0,
    -1.0,
    std::numeric_limits<double>::quiet_NaN(),
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::denorm_min(),
    -std::numeric_limits<double>::denorm_min(),
    std::numeric_limits<double>::min(),
    std::numeric_limits<double>::max(),
    std::numeric_limits<double>::lowest(),
    std::numeric_limits<double>::epsilon(),
    1e38,
    -1e300,
};

}  // namespace quarn::test
