/// \file
/// Decimal digits of an OBJ text, one by one and eight at once.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace quarn::detail {

/// Value of a byte as a decimal digit; above 9 for any other byte.
[[nodiscard]] inline unsigned digitOf(char byte) {
    return static_cast<unsigned char>(byte) - static_cast<unsigned>('0');
}

/// Moves \p p over a run of digits and returns their value, which wraps at 32 bits; 0 for no digit.
[[nodiscard]] inline std::uint32_t readDigits(const char*& p) {
    std::uint32_t value = 0;
    for (unsigned digit = digitOf(*p); digit <= 9; digit = digitOf(*++p)) value = value * 10 + digit;
    return value;
}

/// Up to eight digits at the start of eight bytes.
struct DigitRun {
    unsigned count;       ///< How many digits there are before the first other byte.
    std::uint64_t value;  ///< Their value; without meaning where there are none.
};

/// Reads the digits at the start of eight bytes at once.
/// \pre the machine keeps the lowest byte of a number first
[[nodiscard]] inline DigitRun readDigitRun(const char* eightBytes) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, eightBytes, sizeof bytes);
    // Digits become 0 to 9; only these stay below 0x80 with 0x76 added. A carry spoils later bytes alone.
    bytes ^= 0x3030303030303030U;
    const std::uint64_t others = ((bytes + 0x7676767676767676U) | bytes) & 0x8080808080808080U;
    const auto count = static_cast<unsigned>(std::countr_zero(others)) / 8;
    // Put the last digit into the last byte, with zeros ahead.
    bytes <<= 8 * ((8 - count) & 7U);
    // Join neighbours to numbers of two digits, then of eight.
    bytes = bytes * 10 + (bytes >> 8U);
    constexpr std::uint64_t kEvenPairs = 0x000000FF000000FFU;
    constexpr std::uint64_t kFirstAndThird = 100U + (std::uint64_t{1000000} << 32U);
    constexpr std::uint64_t kSecondAndFourth = 1U + (std::uint64_t{10000} << 32U);
    const std::uint64_t sum =
        (bytes & kEvenPairs) * kFirstAndThird + ((bytes >> 16U) & kEvenPairs) * kSecondAndFourth;
    return {count, sum >> 32U};
}

}  // namespace quarn::detail
