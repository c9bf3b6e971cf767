/// \file
/// Digits, integers and floats of an OBJ text, in a grammar of their own.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace quarn::detail {

/// Returns the value of a byte as a decimal digit; above 9 for any other byte.
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
    unsigned count;       ///< Number of digits before the first other byte.
    std::uint64_t value;  ///< Their value; unspecified if there are none.
};

/// Reads the digits at the start of eight bytes at once.
/// \pre the machine is little-endian
[[nodiscard]] inline DigitRun readDigitRun(const char* eightBytes) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, eightBytes, sizeof bytes);
    // Digits become 0 to 9. Only these stay below 0x80 with 0x76 added. A carry changes later bytes
    // only.
    bytes ^= 0x3030303030303030U;
    const std::uint64_t others = ((bytes + 0x7676767676767676U) | bytes) & 0x8080808080808080U;
    const auto count = static_cast<unsigned>(std::countr_zero(others)) / 8;
    // Shift the last digit into the last byte, after zeros.
    bytes <<= 8 * ((8 - count) & 7U);
    // Join neighbors to numbers of two digits, then of eight.
    bytes = bytes * 10 + (bytes >> 8U);
    constexpr std::uint64_t kEvenPairs = 0x000000FF000000FFU;
    constexpr std::uint64_t kFirstAndThird = 100U + (std::uint64_t{1000000} << 32U);
    constexpr std::uint64_t kSecondAndFourth = 1U + (std::uint64_t{10000} << 32U);
    const std::uint64_t sum =
        (bytes & kEvenPairs) * kFirstAndThird + ((bytes >> 16U) & kEvenPairs) * kSecondAndFourth;
    return {count, sum >> 32U};
}

/// A number, and a place in its text up to which there is no blank, line feed or NUL.
struct ScannedFloat {
    float value;
    const char* stop;
};

/// Scans a float byte by byte. Does not depend on the locale and never fails: text that is no
/// number gives 0.
///
/// Intended: results differ from those of any library's conversion. A minus sign counts anywhere in
/// the number, and a plus sign ends it. Digits that would raise the mantissa above kMantissaLimit
/// are dropped. Powers of ten are multiplied one after another. Zero is always positive.
///
/// \pre a NUL ends the text; it also ends the scan, and nothing after it is read
[[nodiscard]] ScannedFloat scanFloatReference(const char* text);

/// A digit enters the mantissa only while the mantissa is below this limit.
inline constexpr std::uint32_t kMantissaLimit = 16777216;

/// Returns the float of \p mantissa, multiplied by 0.1 \p scale times one after another; for a
/// negative scale by 10.0.
[[nodiscard]] float scaledFloat(std::uint32_t mantissa, std::int32_t scale);

/// Maximum scale of scaledDown().
inline constexpr unsigned kMaxTenths = 8;

/// Returns the value of scaledFloat(), by a single product if that gives the same float.
///
/// In units of 2^-53 of the value, each product with 0.1 has an error of at most 1.5 (rounding 1,
/// the constant 0.5), eight of them of less than 13, and the single product of 2. A unit in the
/// last place of a double is at least one such unit. So both methods round to the same float unless
/// a midpoint of two floats is within 16 units in the last place of the product.
///
/// \pre mantissa < 10 * kMantissaLimit, scale <= kMaxTenths
[[nodiscard]] inline float scaledDown(std::uint32_t mantissa, unsigned scale) {
    constexpr std::array<double, kMaxTenths + 1> kTenths = {1.0,  1e-1, 1e-2, 1e-3, 1e-4,
                                                            1e-5, 1e-6, 1e-7, 1e-8};
    // A double has 29 bits more than a float.
    constexpr std::uint64_t kDroppedBits = (std::uint64_t{1} << 29U) - 1;
    constexpr std::uint64_t kMiddle = std::uint64_t{1} << 28U;
    constexpr std::uint64_t kTolerance = 16;
    const double value = mantissa * kTenths[scale];
    const std::uint64_t dropped = std::bit_cast<std::uint64_t>(value) & kDroppedBits;
    const bool isNearMiddle = dropped - (kMiddle - kTolerance) <= 2 * kTolerance;
    if (isNearMiddle) [[unlikely]]
        return scaledFloat(mantissa, static_cast<std::int32_t>(scale));
    return static_cast<float>(value);
}

/// Returns the value of scanFloatReference(), faster for short numbers: a sign, up to eight digits,
/// a point and one to eight digits.
///
/// \pre *end is NUL, and text <= end
[[nodiscard]] inline ScannedFloat scanFloat(const char* text, const char* end) {
    if constexpr (std::endian::native != std::endian::little) return scanFloatReference(text);
    const bool isNegative = *text == '-';
    const char* const whole = text + static_cast<int>(isNegative);
    const char* p = whole;
    std::uint64_t mantissa = readDigits(p);
    if (p - whole > 8) [[unlikely]]
        return scanFloatReference(text);

    unsigned scale = 0;
    if (*p == '.') {
        ++p;
        // The read of eight bytes may end with the NUL.
        if (end - p < 7) [[unlikely]]
            return scanFloatReference(text);
        const DigitRun fraction = readDigitRun(p);
        if (fraction.count == 0) [[unlikely]]
            return scanFloatReference(text);
        constexpr std::array<std::uint32_t, kMaxTenths + 1> kTens = {
            1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
        scale = fraction.count;
        mantissa = mantissa * kTens[scale] + fraction.value;
        p += scale;
    }
    // True if every digit enters the mantissa and the next byte is no part of the number.
    const bool isShort =
        mantissa < std::uint64_t{10} * kMantissaLimit && static_cast<unsigned char>(*p) <= ' ';
    if (!isShort) [[unlikely]]
        return scanFloatReference(text);
    const auto bits = std::bit_cast<std::uint32_t>(scaledDown(static_cast<std::uint32_t>(mantissa), scale));
    const auto sign = static_cast<std::uint32_t>(isNegative && mantissa != 0) << 31U;
    return {std::bit_cast<float>(bits | sign), p};
}

}  // namespace quarn::detail
