/// \file
/// Random numbers of every kind: ordinary ones, extreme ones and special values.
#pragma once

#include <cstddef>

#include "Support/Rng.h"
#include "Support/SpecialValues.h"

namespace quarn::test {

/// An ordinary number, one of any exponent, or a special value, a third of each.
inline double wildNumber(Rng& rng) {
    switch (rng.integer(0, 2)) {
        case 0:
            return rng.uniform(-3.0, 3.0);
        case 1:
            return rng.spread();
        default:
            return kSpecialValues[static_cast<std::size_t>(
                rng.integer(0, static_cast<int>(kSpecialValues.size()) - 1))];
    }
}

template <std::size_t N>
Point<double, N> wildPoint(Rng& rng) {
    Point<double, N> point;
    for (std::size_t i = 0; i < N; ++i) point[i] = wildNumber(rng);
    return point;
}

}  // namespace quarn::test
