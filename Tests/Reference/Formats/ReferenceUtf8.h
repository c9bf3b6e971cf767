/// \file
/// UTF-8 by the table of well-formed byte sequences, one byte after another.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace quarn::test {

/// Form of the well-formed sequences whose lead byte lies in a range: the range of the second byte,
/// and how many bytes there are. Bytes from the third on are 80 to BF. Source: The Unicode
/// Standard, table 3-7.
struct Utf8Form {
    unsigned lowLead;
    unsigned highLead;
    unsigned lowSecond;
    unsigned highSecond;
    std::size_t length;
};

inline constexpr std::array<Utf8Form, 9> kUtf8Forms = {{{0x00, 0x7F, 0x80, 0xBF, 1},
                                                        {0xC2, 0xDF, 0x80, 0xBF, 2},
                                                        {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                                        {0xE1, 0xEC, 0x80, 0xBF, 3},
                                                        {0xED, 0xED, 0x80, 0x9F, 3},
                                                        {0xEE, 0xEF, 0x80, 0xBF, 3},
                                                        {0xF0, 0xF0, 0x90, 0xBF, 4},
                                                        {0xF1, 0xF3, 0x80, 0xBF, 4},
                                                        {0xF4, 0xF4, 0x80, 0x8F, 4}}};

/// Length of the well-formed sequence at \p start, 0 where there is none.
inline std::size_t wellFormedLength(const std::string& bytes, std::size_t start) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[start + i]); };
    for (const Utf8Form& form : kUtf8Forms) {
        if (at(0) < form.lowLead || at(0) > form.highLead) continue;
        if (start + form.length > bytes.size()) return 0;
        for (std::size_t i = 1; i < form.length; ++i) {
            const unsigned low = i == 1 ? form.lowSecond : 0x80U;
            const unsigned high = i == 1 ? form.highSecond : 0xBFU;
            if (at(i) < low || at(i) > high) return 0;
        }
        return form.length;
    }
    return 0;
}

/// Each byte that is no part of a well-formed sequence becomes one U+FFFD.
inline std::wstring referenceFromUtf8(const std::string& bytes) {
    constexpr std::array<unsigned, 5> kLeadMask = {0, 0x7F, 0x1F, 0x0F, 0x07};
    std::wstring text;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t length = wellFormedLength(bytes, start);
        if (length == 0) {
            text += L'\xFFFD';
            ++start;
            continue;
        }
        unsigned codePoint = static_cast<unsigned char>(bytes[start]) & kLeadMask[length];
        for (std::size_t i = 1; i < length; ++i)
            codePoint = codePoint * 64 + (static_cast<unsigned char>(bytes[start + i]) & 0x3FU);
        text += static_cast<wchar_t>(codePoint);
        start += length;
    }
    return text;
}

/// Bytes of one code point that is no surrogate.
inline std::string referenceToUtf8(char32_t codePoint) {
    const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    const auto trail = [&](unsigned shift) { return byte(0x80U | ((codePoint >> shift) & 0x3FU)); };
    if (codePoint < 0x80U) return {byte(codePoint)};
    if (codePoint < 0x800U) return {byte(0xC0U | (codePoint >> 6U)), trail(0)};
    if (codePoint < 0x10000U) return {byte(0xE0U | (codePoint >> 12U)), trail(6), trail(0)};
    return {byte(0xF0U | (codePoint >> 18U)), trail(12), trail(6), trail(0)};
}

}  // namespace quarn::test
