/// \file
/// The floats of an OBJ text, scanned by rules of their own.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "ObjDigits.h"

namespace quarn::detail {

/// A number, and a place in its text up to which there is no blank, line feed or NUL.
struct ScannedFloat {
    float value;
    const char* stop;
};

/// Scans a float byte by byte. It knows no locale and fails on nothing: text that is no number gives 0.
///
/// Intended: not the conversion of any library, whose results differ. A minus sign counts anywhere in the
/// number, a plus sign ends it, digits that would lift the mantissa beyond kMantissaLimit are dropped, tens
/// are multiplied one after another, and zero is always positive.
///
/// \pre a NUL ends the text; it also ends the scan, and nothing behind it is read
[[nodiscard]] ScannedFloat scanFloatReference(const char* text);

/// A digit enters the mantissa only while that is below this limit.
inline constexpr std::uint32_t kMantissaLimit = 16777216;

/// The float of \p mantissa, multiplied by 0.1 \p scale times one after another; for a negative scale by
/// 10.0.
[[nodiscard]] float scaledFloat(std::uint32_t mantissa, std::int32_t scale);

/// Greatest scale that scaledDown() takes.
inline constexpr unsigned kMaxTenths = 8;

/// The value of scaledFloat(), by one product where that gives the same float.
///
/// In units of 2^-53 of the value, each product with 0.1 is off by at most 1.5 (rounding 1, the constant
/// 0.5), eight of them by less than 13, and the one product by 2. A unit in the last place of a double is at
/// least one such unit. So where no middle between two floats is within 16 last places of the product, both
/// ways round to the same float.
///
/// \pre mantissa < 10 * kMantissaLimit, scale <= kMaxTenths
[[nodiscard]] inline float scaledDown(std::uint32_t mantissa, unsigned scale) {
    constexpr std::array<double, kMaxTenths + 1> kTenths = {1.0,  1e-1, 1e-2, 1e-3, 1e-4,
                                                            1e-5, 1e-6, 1e-7, 1e-8};
    // A double has 29 bits more than a float.
    constexpr std::uint64_t kDroppedBits = (std::uint64_t{1} << 29U) - 1;
    constexpr std::uint64_t kMiddle = std::uint64_t{1} << 28U;
    constexpr std::uint64_t kReach = 16;
    const double value = mantissa * kTenths[scale];
    const std::uint64_t dropped = std::bit_cast<std::uint64_t>(value) & kDroppedBits;
    const bool isNearMiddle = dropped - (kMiddle - kReach) <= 2 * kReach;
    if (isNearMiddle) [[unlikely]]
        return scaledFloat(mantissa, static_cast<std::int32_t>(scale));
    return static_cast<float>(value);
}

/// The value of scanFloatReference(), faster for short numbers: a sign, up to eight digits, a point and one to
/// eight digits.
///
/// \pre a NUL stands at \p end, and \p text is not behind it
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
        // Eight bytes are read, of which the NUL may be the last.
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
    // Whether every digit enters the mantissa, and what follows is no part of the number.
    const bool isShort =
        mantissa < std::uint64_t{10} * kMantissaLimit && static_cast<unsigned char>(*p) <= ' ';
    if (!isShort) [[unlikely]]
        return scanFloatReference(text);
    const auto bits = std::bit_cast<std::uint32_t>(scaledDown(static_cast<std::uint32_t>(mantissa), scale));
    const auto sign = static_cast<std::uint32_t>(isNegative && mantissa != 0) << 31U;
    return {std::bit_cast<float>(bits | sign), p};
}

}  // namespace quarn::detail
