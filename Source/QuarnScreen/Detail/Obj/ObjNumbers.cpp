#include "ObjNumbers.h"

#include <cmath>

namespace quarn::detail {

namespace {

// Reads an exponent, which wraps at 32 bits. Intended: any minus sign in it makes it negative.
std::uint32_t readExponent(const char*& p) {
    std::uint32_t exponent = 0;
    bool isNegative = false;
    for (;; ++p) {
        const unsigned digit = digitOf(*p);
        if (digit <= 9)
            exponent = exponent * 10 + digit;
        else if (*p == '-')
            isNegative = true;
        else if (*p != '+')
            return isNegative ? 0U - exponent : exponent;
    }
}

}  // namespace

float scaledFloat(std::uint32_t mantissa, std::int32_t scale) {
    double value = mantissa;
    // A value that is 0 or infinite does not change any more, which bounds the loops for any scale.
    for (; scale > 0 && value != 0.0; --scale) value = value * 0.1;
    for (; scale < 0 && !std::isinf(value); ++scale) value = value * 10.0;
    return static_cast<float>(value);
}

ScannedFloat scanFloatReference(const char* text) {
    std::uint32_t mantissa = 0;
    // Unsigned, so that it may wrap after billions of digits.
    std::uint32_t scale = 0;
    bool isNegative = false;
    bool isAfterPoint = false;
    const char* p = text;
    for (;; ++p) {
        const unsigned digit = digitOf(*p);
        if (digit <= 9) {
            const bool fitsMantissa = mantissa < kMantissaLimit;
            if (fitsMantissa) mantissa = mantissa * 10 + digit;
            if (fitsMantissa && isAfterPoint) ++scale;
            if (!fitsMantissa && !isAfterPoint) --scale;
        } else if (*p == '-') {
            isNegative = true;
        } else if (*p == '.') {
            isAfterPoint = true;
        } else {
            break;
        }
    }
    // Intended: sign and exponent are ignored, so that a negative zero gives positive zero.
    if (mantissa == 0) return {0.0F, p};
    if (*p == 'e' || *p == 'E') {
        ++p;
        scale -= readExponent(p);
    }
    const float value = scaledFloat(mantissa, static_cast<std::int32_t>(scale));
    return {isNegative ? -value : value, p};
}

}  // namespace quarn::detail
