/// \file
/// The numbers of an OBJ text, scanned step by step and with no thought of speed.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace quarn::test {

/// Byte \p i of a text that a NUL ends.
/// \throws std::out_of_range behind that NUL
inline char byteAt(const std::string& text, std::size_t i) {
    if (i > text.size()) throw std::out_of_range("read behind the NUL");
    return i == text.size() ? '\0' : text[i];
}

inline bool isDigitAt(const std::string& text, std::size_t i) {
    return byteAt(text, i) >= '0' && byteAt(text, i) <= '9';
}

/// Its value counts in 32 bits, wrapped.
inline std::uint32_t referenceExponent(const std::string& text, std::size_t i) {
    std::uint32_t exponent = 0;
    bool isNegative = false;
    while (true) {
        const char c = byteAt(text, i);
        if (c == '-')
            isNegative = true;
        else if (isDigitAt(text, i))
            exponent = exponent * 10 + static_cast<std::uint32_t>(c - '0');
        else if (c != '+')
            break;
        ++i;
    }
    return isNegative ? ~exponent + 1 : exponent;
}

inline float referenceFloat(const std::string& text, std::size_t i) {
    std::uint32_t mantissa = 0;
    std::uint32_t scale = 0;
    bool negative = false;
    bool afterPoint = false;
    while (true) {
        const char c = byteAt(text, i);
        if (c == '-') {
            negative = true;
        } else if (isDigitAt(text, i)) {
            if ((mantissa & 0xFF000000U) == 0) {
                mantissa = mantissa * 10 + static_cast<std::uint32_t>(c - '0');
                if (afterPoint) scale += 1;
            } else if (!afterPoint) {
                scale -= 1;
            }
        } else if (c == '.') {
            afterPoint = true;
        } else {
            break;
        }
        ++i;
    }
    if (mantissa == 0) return 0.0F;
    if (byteAt(text, i) == 'e' || byteAt(text, i) == 'E') scale -= referenceExponent(text, i + 1);

    auto steps = static_cast<std::int32_t>(scale);
    double value = mantissa;
    while (steps >= 8) {
        for (int k = 0; k < 8; ++k) value *= 0.1;
        steps -= 8;
    }
    while (steps > 0) {
        value *= 0.1;
        steps -= 1;
    }
    while (steps <= -8) {
        for (int k = 0; k < 8; ++k) value *= 10.0;
        steps += 8;
    }
    while (steps < 0) {
        value *= 10.0;
        steps += 1;
    }
    const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(value));
    return std::bit_cast<float>(negative ? bits | 0x80000000U : bits);
}

inline std::size_t referenceSkipBlanks(const std::string& text, std::size_t i) {
    while (byteAt(text, i) == ' ') ++i;
    return i;
}

inline std::size_t referenceSkipDigits(const std::string& text, std::size_t i) {
    while (isDigitAt(text, i)) ++i;
    return i;
}

/// The digits at \p i, wrapped at 32 bits, less one.
inline std::int32_t referenceIndex(const std::string& text, std::size_t i) {
    std::uint32_t value = 0;
    for (; isDigitAt(text, i); ++i) value = value * 10 + static_cast<std::uint32_t>(text[i] - '0');
    return static_cast<std::int32_t>(value - 1);
}

struct ReferenceObjCorner {
    std::int32_t vertex = -1;
    std::int32_t textureCoordinate = -1;
    std::int32_t normal = -1;

    friend bool operator==(const ReferenceObjCorner&, const ReferenceObjCorner&) = default;
};

inline ReferenceObjCorner referenceObjCorner(const std::string& text, std::size_t i) {
    ReferenceObjCorner corner;
    const std::size_t first = referenceSkipBlanks(text, i);
    corner.vertex = referenceIndex(text, first);
    const std::size_t slash = referenceSkipDigits(text, first);
    if (byteAt(text, slash) != '/') return corner;

    if (byteAt(text, slash + 1) == '/') {
        corner.normal = referenceIndex(text, referenceSkipBlanks(text, slash + 2));
        return corner;
    }
    corner.textureCoordinate = referenceIndex(text, referenceSkipBlanks(text, slash + 1));
    const std::size_t secondSlash = referenceSkipDigits(text, slash + 1);
    if (byteAt(text, secondSlash) != '/') return corner;
    corner.normal = referenceIndex(text, referenceSkipBlanks(text, secondSlash + 1));
    return corner;
}

}  // namespace quarn::test
