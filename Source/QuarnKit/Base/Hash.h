/// \file
/// Hashes of points and other tuples of numbers.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace quarn {

/// Returns a hash of the first \p N elements of \p numbers, whose bits all depend on all elements.
/// Equal tuples have equal hashes; in particular, 0 and -0 are equal.
///
/// The value is the same on every platform.
template <std::size_t N, class Numbers>
[[nodiscard]] std::uint64_t hashOf(const Numbers& numbers) {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio, odd
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < N; ++i) {
        // Adding 0 turns -0 into 0.
        hash ^= std::bit_cast<std::uint64_t>(static_cast<double>(numbers[i]) + 0.0);
        hash *= kMultiplier;
        // The product carries information upwards alone; bring the upper half down.
        hash ^= hash >> 32U;
    }
    return hash;
}

}  // namespace quarn
