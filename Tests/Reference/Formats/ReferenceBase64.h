/// \file
/// Base64 bit by bit.
#pragma once

#include <string>
#include <string_view>

namespace quarn::test {

inline constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Six bits for each character, missing bits zero, filled up with "=" to a multiple of four characters.
inline std::string referenceEncodeBase64(const std::string& bytes) {
    std::string text;
    const std::size_t bitCount = bytes.size() * 8;
    for (std::size_t start = 0; start < bitCount; start += 6) {
        unsigned value = 0;
        for (std::size_t bit = start; bit < start + 6; ++bit) {
            const unsigned byte = bit < bitCount ? static_cast<unsigned char>(bytes[bit / 8]) : 0U;
            value = value * 2 + ((byte >> (7 - bit % 8)) & 1U);
        }
        text += kBase64Alphabet[value];
    }
    while (text.size() % 4 != 0) text += '=';
    return text;
}

/// The whole bytes of the bits that stand before the first character outside of the alphabet.
inline std::string referenceDecodeBase64(const std::string& text) {
    std::string bytes;
    unsigned bits = 0;
    unsigned bitCount = 0;
    for (const char character : text) {
        const std::size_t value = kBase64Alphabet.find(character);
        if (value == std::string_view::npos) break;
        bits = (bits << 6U) | static_cast<unsigned>(value);
        bitCount += 6;
        if (bitCount < 8) continue;
        bitCount -= 8;
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> bitCount));
    }
    return bytes;
}

}  // namespace quarn::test
