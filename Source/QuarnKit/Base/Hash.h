/// \file
/// Hashes of points and other tuples of numbers. The values are the same on every platform.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace quarn {

/// Multiplier of the hashes: 2^64 over the golden ratio, odd.
inline constexpr std::uint64_t kHashMultiplier = 0x9E3779B97F4A7C15;

/// Returns the hash with its upper half added to the lower one. A product carries information
/// upwards alone, so that its lower bits are poor without this.
[[nodiscard]] constexpr std::uint64_t foldHash(std::uint64_t hash) {
    return hash ^ (hash >> 32U);
}

/// Returns a hash of the first \p N elements of \p numbers, for tables. Equal tuples have equal
/// hashes; in particular, 0 and -0 are equal.
template <std::size_t N, class Numbers>
[[nodiscard]] std::uint64_t hashOf(const Numbers& numbers) {
    std::uint64_t hash = 0;
    // Adding 0 turns -0 into 0.
    for (std::size_t i = 0; i < N; ++i)
        hash = foldHash((hash ^ std::bit_cast<std::uint64_t>(static_cast<double>(numbers[i]) + 0.0)) *
                        kHashMultiplier);
    return hash;
}

/// Returns a faster hash of the bits of doubles, for caches. The hashes of 0 and -0 differ, and
/// tuples of round numbers collide more often.
template <std::size_t N, class Numbers>
[[nodiscard]] std::uint64_t bitHashOf(const Numbers& numbers) {
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < N; ++i)
        hash = (hash ^ std::bit_cast<std::uint64_t>(numbers[i])) * kHashMultiplier;
    return foldHash(hash);
}

}  // namespace quarn
